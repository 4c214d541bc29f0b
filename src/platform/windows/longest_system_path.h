// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <windows.h>

namespace veltrin {

// Longest path that the system knows, in UTF-16 units with the closing NUL.
constexpr DWORD kLongestSystemPath = 32768;

}  // namespace veltrin
