// SPDX-License-Identifier: GPL-3.0-or-later
// Which names a file may bear, by the rules of Windows on every system.
#pragma once

#include <cstddef>
#include <string_view>

namespace veltrin {

// Longest path that Windows takes (MAX_PATH less the closing NUL), in UTF-16
// units.
inline constexpr std::size_t kLongestPath = 259;

// Whether Windows takes `name` (UTF-8, one name without a folder) as the name of
// a file. It refuses an empty name, one with any of \ / : * ? " < > | or a control
// character, one that ends in a blank or a dot, one of more than 259 characters,
// and the device names CON, PRN, AUX, NUL, COM1 to COM9 and LPT1 to LPT9 (the
// superscripts 1 to 3 count as digits there) in any case, with or without an
// extension.
bool acceptableFileName(std::string_view name);

// Length of a UTF-8 text in UTF-16 units, the unit in which Windows counts.
std::size_t lengthInUtf16(std::string_view text);

// The file name within `name`, which starts with the separator ("\PingTest.txt").
// Throws StatementFailed, as a bad file name, when the separator is missing, the
// name is not acceptable, or `folder` and `name` together are too long.
std::string_view requireFileName(std::string_view folder, std::string_view name);

}  // namespace veltrin
