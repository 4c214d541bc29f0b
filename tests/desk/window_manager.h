// SPDX-License-Identifier: GPL-3.0-or-later
// The window manager of the desk, which works beside the program.
#pragma once

#include <chrono>

namespace veltrin::desk {

// Waits until the window manager of DISPLAY has done what came to it before, such as placing
// a window that is to be shown. Throws std::runtime_error when that takes longer.
void awaitWindowManager(std::chrono::milliseconds patience);

}  // namespace veltrin::desk
