// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/utf8.h"

namespace veltrin {

// The ranges leave out longer forms than needed, halves of surrogate pairs and what is
// above U+10FFFF.
Utf8Front utf8Front(std::string_view text) {
  const auto byte = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned lead = byte(0);
  if (lead < 0x80) return {Utf8Front::Kind::Character, 1};
  if (lead < 0xC2 || lead > 0xF4) return {Utf8Front::Kind::Stray, 1};
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : kLongestCharacter;
  const unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  for (std::size_t at = 1; at < length; ++at) {
    if (at == text.size()) return {Utf8Front::Kind::Cut, text.size()};
    const bool fits = at == 1 ? byte(1) >= least && byte(1) <= most : isContinuation(text[at]);
    if (!fits) return {Utf8Front::Kind::Stray, 1};
  }
  return {Utf8Front::Kind::Character, length};
}

}  // namespace veltrin
