// SPDX-License-Identifier: GPL-3.0-or-later
// What callers may take of the server, and what the command line may choose.
#pragma once

#include <chrono>
#include <cstddef>

namespace veltrin::endpoint {

// How much a caller may send before the server stops reading it, in bytes. The
// program sends nothing; what another one sends is read away so that the kernel has
// no reason to reset the connection before the answer was read.
inline constexpr std::size_t kMostDrained = std::size_t{64} * 1024;

// How long accepting rests when the system has no descriptor left and no caller can
// be let go for one.
inline constexpr std::chrono::milliseconds kRest{100};

// What the command line accepts.
inline constexpr std::size_t kMostCallersCeiling = 1'000'000;
inline constexpr std::chrono::milliseconds kShortestTimeout{100};
inline constexpr std::chrono::milliseconds kLongestTimeout{600'000};
inline constexpr std::size_t kMostSockets = 64;  // ports, and addresses

// The limits that callers are held to.
struct Limits {
  // How many may stand at once. One more, and the one who stands longest is let go:
  // it was answered long ago.
  std::size_t mostCallers = 10'000;
  // How many may stand at once from one household. One more is turned away.
  std::size_t mostPerAddress = 64;
  // How long one may stand.
  std::chrono::milliseconds timeout{10'000};
};

}  // namespace veltrin::endpoint
