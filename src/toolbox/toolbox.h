// SPDX-License-Identifier: GPL-3.0-or-later
// All tools of the program, by the names under which the frame opens them.
#pragma once

#include "frame/program.h"

namespace veltrin {

// Enters every window that others open by name, and the collector of the short
// summary, into a program.
void provideTools(Program& program);

}  // namespace veltrin
