// SPDX-License-Identifier: GPL-3.0-or-later
// What a command line must keep to on every system.
#pragma once

#include <cstddef>
#include <string_view>

#include "text/strings.h"

namespace veltrin {

// Longest command line of CreateProcess in characters: 32767 with the closing
// NUL, which the text here does not hold.
inline constexpr std::size_t kLongestCommandLine = 32767 - 1;

// Whether CreateProcess would look at `commandLine` at all: it is not empty, not
// too long, and holds no NUL, behind which the system would overlook the rest.
inline bool acceptableCommandLine(std::string_view commandLine) {
  return !commandLine.empty() &&
         static_cast<std::size_t>(Len(commandLine)) <= kLongestCommandLine &&
         commandLine.find('\0') == std::string_view::npos;
}

}  // namespace veltrin
