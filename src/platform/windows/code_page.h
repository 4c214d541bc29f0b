// SPDX-License-Identifier: GPL-3.0-or-later
// Texts between UTF-8, which the program keeps, and the forms that Windows takes.
#pragma once

#include <string>
#include <string_view>

namespace veltrin {

// UTF-8 as UTF-16 and back. Bytes that are no UTF-8 and halves of surrogate pairs
// become the replacement character U+FFFD.
std::wstring toWide(std::string_view utf8);
std::string fromWide(std::wstring_view wide);

// UTF-8 as bytes of the system's ANSI code page and back. A character that the code
// page lacks becomes the one that the system finds nearest, or a question mark.
// NULs inside the text are kept.
std::string toAnsi(std::string_view utf8);
std::string fromAnsi(std::string_view ansi);

// Bytes of a code page without the part of a character that a cut left at their end.
// Bytes with other things in them that are no characters stay as they are.
std::string_view withoutCutCharacter(std::string_view bytes, unsigned codePage);

}  // namespace veltrin
