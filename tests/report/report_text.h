// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of a report as a text that a person reads, and what differs between two of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/list_view.h"

namespace veltrin {

// A line of a report as a line of text:
//   20 H  MotherBoard
// that is the number of its picture, a letter for how it looks, two blanks, and what it says.
// The letters are H for a heading (orange and bold), h for one that is not bold, B and P for what
// stands below it in green, bold and plain. Any other colour is its number. A text that ends with
// a blank or a bar has a bar behind it, so that its end is seen.
std::string textOf(const ListLine& line);

// What is in one text and not in the other, line by line, each "-" or "+" with the number of the
// line, at most so many lines; empty when they are equal.
std::string differences(std::string_view expected, std::string_view found, std::size_t most = 60);

}  // namespace veltrin
