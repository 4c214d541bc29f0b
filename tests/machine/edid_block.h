// SPDX-License-Identifier: GPL-3.0-or-later
// Makes what a monitor tells of itself, for tests.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace veltrin {

// A base block of EDID with a sound start and checksum, bytes 0 everywhere else but for what
// is put into it.
class EdidBlock {
 public:
  // Of a maker's three letters, and its number of the model.
  explicit EdidBlock(std::string_view maker = "DEL", std::uint16_t product = 0xA07A);

  // Adds a descriptor: the model's name, at most 13 characters; another text; the limits of the
  // rate, as their bytes and the flags that raise them. There is room for four.
  EdidBlock& withName(std::string_view name) { return withText(0xFC, name); }
  EdidBlock& withText(std::uint8_t kind, std::string_view text);
  EdidBlock& withRefresh(std::uint8_t least, std::uint8_t most, std::uint8_t flags = 0);
  // The timing of a picture, which is no text.
  EdidBlock& withTiming();

  // Changes one byte before the checksum is made.
  EdidBlock& withByte(std::size_t at, std::uint8_t value);

  std::string bytes() const;

 private:
  EdidBlock& withDescriptor(const std::array<std::uint8_t, 18>& descriptor);

  std::array<std::uint8_t, 128> block_{};
  std::size_t next_ = 54;
};

}  // namespace veltrin
