// SPDX-License-Identifier: GPL-3.0-or-later
// The bytes that the talker prints when it is asked for a number of bytes.
#pragma once

#include <cstddef>
#include <cstdint>

namespace veltrin {

// Bytes after which the pattern starts anew: a prime, so that no block size of a
// pipe hides a lost or doubled block.
inline constexpr std::size_t kTalkerPeriod = 65521;

// Byte number `position`, counted from 0, of everything that one talker prints
// by "bytes" and "bursts".
inline char talkerByte(std::uint64_t position) {
  const auto scattered = static_cast<std::uint32_t>(position % kTalkerPeriod) * 2654435761U;
  return static_cast<char>(scattered >> 24);
}

}  // namespace veltrin
