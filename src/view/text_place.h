// SPDX-License-Identifier: GPL-3.0-or-later
// Where the letters of a text on the screen lie in the program's text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <QString>

namespace veltrin {

// A place on the screen: its line and the UTF-16 units before it there, both from 0.
struct TextPlace {
  int line = 0;
  int column = 0;
};

// The bytes of a piece of text.
struct ByteRange {
  std::size_t begin = 0;
  std::size_t length = 0;
};

// The bytes of `text` behind a place that make so many units on the screen. Lines end at
// CR LF, CR or LF, and such an end is one unit. Each byte that is no UTF-8 is one unit
// too; a letter that the end of the text cuts is none. Places behind the end are the end.
ByteRange bytesAt(std::string_view text, TextPlace place, int units);

// The leading bytes of `text` without a letter or line break that its end cuts.
std::size_t wholePart(std::string_view text);

// Widens what is to be taken out of `text` by what stands before it, so that the two ends
// that meet then go on to look as they do: a carriage return and a line feed would become
// one line break, and bytes that are no letter one together. Gives what has to take
// their place.
std::string keepApart(std::string_view text, TextPlace place, ByteRange& taken);

// How the program's text looks on the screen, where lines are parted by LF and by nothing
// else, and the other way round.
QString onScreen(std::string_view text);
std::string offScreen(const QString& typed);

}  // namespace veltrin
