// SPDX-License-Identifier: GPL-3.0-or-later
// Pieces of texts and positions in them. Lengths and positions count characters,
// positions from 1.
//
// A character is a code point: one well-formed sequence of UTF-8 (RFC 3629, section
// 4). A byte that belongs to none, as the half of a character at the end of a chunk,
// counts as one character; it stays as it is and is never taken together with others.
// A letter and a combining mark behind it are two characters. Cutting a text leaves
// its characters what they are, but two texts put together may complete one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veltrin {

// Line break of every text that the windows and files hold.
inline constexpr std::string_view kLineBreak = "\r\n";

enum class Compare { Exact, IgnoreCase };

// The `length` characters of `text` from position `start` on, fewer where the text
// ends before; empty when it starts behind the end.
// Throws StatementFailed for a start below 1 or a negative length.
std::string Mid(std::string_view text, std::int64_t start);
std::string Mid(std::string_view text, std::int64_t start, std::int64_t length);

// The first or last `length` characters, or the whole text when it is shorter.
// Throw StatementFailed for a negative length.
std::string Left(std::string_view text, std::int64_t length);
std::string Right(std::string_view text, std::int64_t length);

// Position of the first `wanted` in `text` at or behind `start`; 0 when there is
// none. An empty `wanted` is found at `start` inside the text. A part of a character
// is not found in the whole one. IgnoreCase folds ASCII letters.
// Throws StatementFailed for a start below 1.
std::int64_t InStr(std::int64_t start, std::string_view text, std::string_view wanted,
                   Compare compare = Compare::Exact);

// Length of a text. Looks at all of it.
std::int64_t Len(std::string_view text);

// Without blanks at both ends.
std::string Trim(std::string_view text);

// ASCII letters in lower case, everything else as it is.
std::string LCase(std::string_view text);

// ASCII letters in upper case, everything else as it is.
std::string UCase(std::string_view text);

// Whether two texts are equal when ASCII letters are folded.
bool equalIgnoringCase(std::string_view left, std::string_view right);

}  // namespace veltrin
