// SPDX-License-Identifier: GPL-3.0-or-later
// The rules by which text becomes a number and a number becomes text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veltrin {

// Reads a number from the start of a text and stops at the first character that
// cannot belong to it; blanks, tabs and line feeds anywhere before that are
// passed over. Knows a sign, a point, an exponent (E or D) and the prefixes &H
// and &O. Gives 0 for a text that holds no number. Never fails.
double Val(std::string_view text);

// Converts a whole text to a number: blanks around it, a sign, thousands
// separators, a point and an exponent are allowed.
// Throws StatementFailed for an empty text and for anything else.
double toNumber(std::string_view text);

// A number as an integer of 32 bits: rounded, halves to the even one. Throws
// StatementFailed where it does not fit.
std::int32_t toLong(double number);

// A number as a text takes it up: whole numbers as their digits, others with up
// to 15 significant digits, no blank in front.
std::string toText(double number);

// A number in a pattern of the places '#' and '0' with or without a point ("#", "###", "0",
// "#,###", "##.###", "##.#0#"): rounded half away from zero to the digits behind the
// pattern's point. A '0' is a digit in any case, a '#' only where the number has one: "#"
// gives an empty text for 0, "##.###" ".5" and "5.". A comma puts commas between thousands.
std::string Format(double number, std::string_view pattern);

// A number rounded half away from zero to a whole one, a comma between thousands; "0" for 0.
std::string FormatNumber(double number);

}  // namespace veltrin
