// SPDX-License-Identifier: GPL-3.0-or-later
// The characters of a text, one by one: the plain model beside which the text functions
// are tested.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltrin {

// Bytes of the well-formed UTF-8 sequence at the start of a text, by decoding it; 1 for
// a byte that starts none (RFC 3629, sections 3 and 4).
inline std::size_t modelCharacterLength(std::string_view text) {
  struct Form {
    std::size_t length;
    unsigned mask;        // of the first byte's mark
    unsigned mark;        // the first byte's upper bits
    std::uint32_t least;  // lowest code point that needs this length
  };
  constexpr Form kForms[] = {
      {2, 0xE0, 0xC0, 0x80}, {3, 0xF0, 0xE0, 0x800}, {4, 0xF8, 0xF0, 0x10000}};
  const auto first = static_cast<unsigned char>(text.front());
  for (const Form& form : kForms) {
    if ((first & form.mask) != form.mark || text.size() < form.length) continue;
    std::uint32_t point = first & ~form.mask;
    bool complete = true;
    for (std::size_t at = 1; at < form.length; ++at) {
      const auto byte = static_cast<unsigned char>(text[at]);
      complete = complete && (byte & 0xC0) == 0x80;
      point = point << 6 | (byte & 0x3Fu);
    }
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    if (complete && point >= form.least && point <= 0x10FFFF && !surrogate) return form.length;
  }
  return 1;
}

inline std::vector<std::string> charactersOf(std::string_view text) {
  std::vector<std::string> characters;
  while (!text.empty()) {
    const std::size_t length = modelCharacterLength(text);
    characters.emplace_back(text.substr(0, length));
    text.remove_prefix(length);
  }
  return characters;
}

// Characters from one place (from 0) up to another, as far as there are any.
inline std::string joinedCharacters(const std::vector<std::string>& characters, std::size_t from,
                                    std::size_t to = static_cast<std::size_t>(-1)) {
  std::string text;
  for (std::size_t at = from; at < to && at < characters.size(); ++at) text += characters[at];
  return text;
}

}  // namespace veltrin
