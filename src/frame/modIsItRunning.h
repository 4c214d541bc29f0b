// SPDX-License-Identifier: GPL-3.0-or-later
// The test for a running copy of the program.
#pragma once

#include <cstdint>
#include <string>

#include "platform/desktop.h"

namespace veltrin {

// A number that stands for a window of that title, 0 when there is none. The
// application's own title is put aside meanwhile, so that its own application
// window is not found.
std::uint32_t runningWindow(Desktop& desktop, const std::string& title);

}  // namespace veltrin
