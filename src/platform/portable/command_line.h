// SPDX-License-Identifier: GPL-3.0-or-later
// Splits one command line text into a program's arguments.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veltrin {

// The arguments that a program of Microsoft's C runtime finds in the command
// line `text`. Blanks and tabs separate arguments.
//
// The first argument, the program's name, runs to the first separator outside
// quotes; quotes are taken away and a backslash is a plain character. A text
// that starts with a separator has an empty name.
//
// In every other argument a quote starts or ends a stretch in which separators
// are plain characters, and two quotes within such a stretch stand for one. In
// front of a quote, two backslashes stand for one, and an odd one left over
// makes the quote a plain character; elsewhere a backslash is a plain character.
// An unfinished stretch ends with the text.
//
// An empty text has no arguments at all. Bytes above 127 and NUL are plain.
std::vector<std::string> splitCommandLine(std::string_view text);

}  // namespace veltrin
