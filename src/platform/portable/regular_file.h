// SPDX-License-Identifier: GPL-3.0-or-later
// Reading a file that may be anything.
#pragma once

#include <cstdint>
#include <string>

namespace veltrin {

// Larger files are not read.
inline constexpr std::uintmax_t kLargestRead = std::uintmax_t{256} * 1024 * 1024;

// The bytes of the file at `path` (the system's own, in UTF-8). Throws StatementFailed when
// there is none that may be read, when it is too large, and for a folder, a pipe or a device,
// which might never end.
std::string readRegularFile(const std::string& path);

}  // namespace veltrin
