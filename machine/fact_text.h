// SPDX-License-Identifier: GPL-3.0-or-later
// Pieces of the texts in which a system keeps its facts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrin {

// Hands over the lines of a text one by one, without their ends. A last line
// without an end counts too.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}

  // Stores the next line. False when there is none any more.
  bool next(std::string_view& line);

 private:
  std::string_view rest_;
};

// Without blanks, tabs, line ends and zero bytes at both ends.
std::string_view trimmed(std::string_view text);

// The pieces between blanks and tabs.
std::vector<std::string_view> wordsOf(std::string_view text);

// The pieces between separators, without empty ones.
std::vector<std::string> piecesOf(std::string_view text, char separator);

// The whole text as a number without sign; nothing for any other text, and for a
// number beyond 64 bits.
std::optional<std::uint64_t> wholeNumber(std::string_view text, int base = 10);

// A value as it may stand on a line of its own: trimmed, control characters as
// blanks, and each byte that is no UTF-8 as a question mark.
std::string printable(std::string_view text);

// ASCII letters in lower or upper case, everything else as it is.
std::string lowerCase(std::string_view text);
std::string upperCase(std::string_view text);

// Undoes the escapes \ooo (three octal digits) by which the kernel writes blanks
// in the paths of its lists (fs/seq_file.c).
std::string unescaped(std::string_view path);

// The value of KEY=VALUE in a text of such lines as a shell would take it, quotes
// and escapes undone (os-release(5)); the last one when there are several. Empty
// when there is none.
std::string shellValue(std::string_view text, std::string_view key);

// The value of `key` in the [section] of a text of such sections; blanks around
// the "=" do not count, and names are compared without regard to case. The last
// one when there are several, empty when there is none.
std::string sectionValue(std::string_view text, std::string_view section, std::string_view key);

// The number of `size` bytes, 1 to 8, the lowest first, that stands at a place;
// nothing when the bytes end before it does.
std::optional<std::uint64_t> littleEndian(std::string_view bytes, std::size_t at, std::size_t size);

// A number with a comma between thousands.
std::string withCommas(std::uint64_t number);

}  // namespace veltrin
