// SPDX-License-Identifier: GPL-3.0-or-later
// Which windows of a program are open, the hidden ones among them.
#pragma once

#include <array>

#include "frame/program.h"
#include "frame/window_name.h"

namespace veltrin {

// One flag for each name, in the order of the names.
using OpenWindows = std::array<bool, kWindowNames.size()>;

OpenWindows openWindows(const Program& program);

}  // namespace veltrin
