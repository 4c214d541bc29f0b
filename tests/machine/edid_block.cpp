// SPDX-License-Identifier: GPL-3.0-or-later
#include "edid_block.h"

#include <algorithm>
#include <numeric>

namespace veltrin {

EdidBlock::EdidBlock(std::string_view maker, std::uint16_t product) {
  std::fill(block_.begin() + 1, block_.begin() + 7, 0xFF);
  unsigned letters = 0;
  for (const char letter : maker) {
    letters = letters << 5 | (static_cast<unsigned>(letter - 'A' + 1) & 0x1F);
  }
  block_[8] = static_cast<std::uint8_t>(letters >> 8);
  block_[9] = static_cast<std::uint8_t>(letters & 0xFF);
  block_[10] = static_cast<std::uint8_t>(product & 0xFF);
  block_[11] = static_cast<std::uint8_t>(product >> 8);
  block_[18] = 1;
  block_[19] = 4;
}

EdidBlock& EdidBlock::withText(std::uint8_t kind, std::string_view text) {
  std::array<std::uint8_t, 18> descriptor{};
  descriptor[3] = kind;
  std::fill(descriptor.begin() + 5, descriptor.end(), ' ');
  std::copy(text.begin(), text.end(), descriptor.begin() + 5);
  if (text.size() < 13) {
    descriptor[5 + text.size()] = '\n';
  }
  return withDescriptor(descriptor);
}

EdidBlock& EdidBlock::withRefresh(std::uint8_t least, std::uint8_t most, std::uint8_t flags) {
  return withDescriptor({0, 0, 0, 0xFD, flags, least, most, 30, 83, 17});
}

EdidBlock& EdidBlock::withTiming() {
  return withDescriptor({0x28, 0x3C, 0x80, 0xA0, 0x70, 0xB0, 0x23, 0x40, 0x30, 0x20, 0x36, 0, 6,
                         0x44, 0x21, 0, 0, 0x1A});
}

EdidBlock& EdidBlock::withByte(std::size_t at, std::uint8_t value) {
  block_.at(at) = value;
  return *this;
}

std::string EdidBlock::bytes() const {
  const unsigned sum = std::accumulate(block_.begin(), block_.end() - 1, 0U);
  std::string bytes(block_.begin(), block_.end());
  bytes.back() = static_cast<char>((256 - sum % 256) % 256);
  return bytes;
}

EdidBlock& EdidBlock::withDescriptor(const std::array<std::uint8_t, 18>& descriptor) {
  std::copy(descriptor.begin(), descriptor.end(), block_.begin() + static_cast<long>(next_));
  next_ = std::min<std::size_t>(next_ + 18, 108);
  return *this;
}

}  // namespace veltrin
