// SPDX-License-Identifier: GPL-3.0-or-later
// What is in the files of the lab's web hosts: bytes that everybody can tell beforehand.
#pragma once

#include <cstdint>

namespace veltrin::lab {

// The byte at a place, from 0, of every file. No two stretches of a file are alike:
// multiplying by an odd number (2^64 divided by the golden ratio) twice, with the upper half
// folded onto the lower one between, makes each byte depend on all of its place.
constexpr std::uint8_t webByte(std::uint64_t place) {
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15ULL;
  const std::uint64_t once = (place + 1) * kSpread;
  return static_cast<std::uint8_t>((once ^ once >> 32) * kSpread >> 56);
}

}  // namespace veltrin::lab
