// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/edid.h"

#include <array>
#include <cstddef>
#include <numeric>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

using namespace std::string_view_literals;

// Places in the base block (E-EDID A2, table 3.1).
constexpr std::size_t kBlock = 128;
constexpr std::string_view kStart = "\x00\xFF\xFF\xFF\xFF\xFF\xFF\x00"sv;
constexpr std::size_t kMaker = 8;
constexpr std::size_t kProduct = 10;
constexpr std::size_t kVersion = 18;
constexpr std::array<std::size_t, 4> kDescriptors{54, 72, 90, 108};
constexpr std::size_t kDescriptor = 18;

// A descriptor that is no timing begins with two zero bytes, and tells its kind behind a third
// (section 3.10.3).
constexpr std::size_t kKind = 3;
constexpr std::size_t kFlags = 4;
constexpr std::size_t kContent = 5;
constexpr unsigned kNameKind = 0xFC;
constexpr unsigned kLimitsKind = 0xFD;

// Bits of a limits descriptor: the limit is 255 higher than its byte (table 3.26).
constexpr unsigned kMostIsHigher = 2;
constexpr unsigned kLeastIsHigher = 1;
constexpr unsigned kHigher = 255;

unsigned byteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

// All bytes of a block add up to a multiple of 256.
bool isSound(std::string_view block) {
  const unsigned sum = std::accumulate(
      block.begin(), block.end(), 0U,
      [](unsigned total, char byte) { return total + static_cast<unsigned char>(byte); });
  return block.size() == kBlock && block.starts_with(kStart) && sum % 256 == 0 &&
         byteAt(block, kVersion) == 1;
}

// Three letters of five bits each, from the highest on; 1 is A (section 3.4.1).
std::string makerIn(std::string_view block) {
  const unsigned packed = byteAt(block, kMaker) << 8 | byteAt(block, kMaker + 1);
  std::string maker;
  for (const unsigned shift : {10U, 5U, 0U}) {
    const unsigned letter = packed >> shift & 0x1F;
    if (letter < 1 || letter > 26) {
      return {};
    }
    maker += static_cast<char>('A' + letter - 1);
  }
  return maker;
}

// A line end ends the name, and blanks fill up what is left (section 3.10.3.4).
std::string nameIn(std::string_view descriptor) {
  const std::string_view text = descriptor.substr(kContent);
  return printable(text.substr(0, text.find('\n')));
}

// Limits that cannot be are none (section 3.10.3.3).
std::optional<RefreshRange> refreshIn(std::string_view descriptor) {
  const unsigned flags = byteAt(descriptor, kFlags);
  RefreshRange range{byteAt(descriptor, kContent), byteAt(descriptor, kContent + 1)};
  if ((flags & kMostIsHigher) != 0) {
    range.most += kHigher;
    range.least += (flags & kLeastIsHigher) != 0 ? kHigher : 0;
  }
  if (range.least == 0 || range.least > range.most) {
    return std::nullopt;
  }
  return range;
}

}  // namespace

std::optional<EdidFacts> readEdid(std::string_view bytes) {
  const std::string_view block = bytes.substr(0, kBlock);
  if (!isSound(block)) {
    return std::nullopt;
  }
  EdidFacts facts;
  facts.maker = makerIn(block);
  facts.product = static_cast<std::uint16_t>(littleEndian(block, kProduct, 2).value_or(0));
  for (const std::size_t at : kDescriptors) {
    const std::string_view descriptor = block.substr(at, kDescriptor);
    if (!descriptor.starts_with("\0\0\0"sv)) {
      continue;
    }
    const unsigned kind = byteAt(descriptor, kKind);
    if (kind == kNameKind && facts.name.empty()) {
      facts.name = nameIn(descriptor);
    } else if (kind == kLimitsKind && !facts.refresh) {
      facts.refresh = refreshIn(descriptor);
    }
  }
  return facts;
}

}  // namespace veltrin
