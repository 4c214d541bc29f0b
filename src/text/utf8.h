// SPDX-License-Identifier: GPL-3.0-or-later
// The one rule by which bytes are characters.
#pragma once

#include <cstddef>
#include <string_view>

namespace veltrin {

// What stands at the start of a text, by RFC 3629, section 4.
struct Utf8Front {
  enum class Kind {
    Character,  // a well-formed sequence
    Cut,        // all of the text, which ends inside a well-formed sequence
    Stray,      // one byte that belongs to no well-formed sequence
  };
  Kind kind = Kind::Stray;
  std::size_t bytes = 1;
};

// Bytes of the longest sequence.
inline constexpr std::size_t kLongestCharacter = 4;

// Of a text that is not empty.
Utf8Front utf8Front(std::string_view text);

// 80 to BF: what follows the first byte of a sequence, and never starts one.
inline bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace veltrin
