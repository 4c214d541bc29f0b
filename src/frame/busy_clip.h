// SPDX-License-Identifier: GPL-3.0-or-later
// The clip that shows that a test is running.
#pragma once

#include "forms/animation.h"
#include "frame/program.h"

namespace veltrin {

// Opens the clip in a window's animation and plays it.
inline void playBusyClip(const Program& program, Animation& animation) {
  animation.open(program.programFolder + "\\files\\ping.avi");
}

}  // namespace veltrin
