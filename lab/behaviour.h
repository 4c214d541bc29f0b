// SPDX-License-Identifier: GPL-3.0-or-later
// How a node of the simulated Internet behaves, and the keys of a scenario file
// that say so.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace veltrin::lab {

// A duration, or a moment as the time since some beginning.
using Time = std::chrono::nanoseconds;

// Picks `picked` of every `of` in a row, spread evenly: 1 of 5 picks the 5th, the
// 10th, ...; 13 of 100 the 8th, the 16th, the 24th, the 31st, ... Any 100 in a row
// hold exactly 13 of them.
struct Pattern {
  std::uint32_t picked = 0;  // 0 to `of`
  std::uint32_t of = 1;      // 1 and more

  // Whether it picks the one with a number; the first is 1.
  bool picks(std::uint64_t number) const {
    return number * picked / of != (number - 1) * picked / of;
  }

  bool operator==(const Pattern&) const = default;
};

// What is lost: a share at random, or by a pattern.
struct Loss {
  double share = 0;  // 0 to 1
  Pattern pattern;
};

// What a router does with packets that go on behind it.
enum class Beyond { Passes, Lost, HostUnreachable, NetUnreachable };

// How a host or a router behaves for a while. The values down to `silent`
// concern what it answers itself, the others all that comes to it or passes it.
struct Behaviour {
  Time delay{};                 // round trip
  Time jitter{};                // 0 to delay; answers take delay - jitter to delay + jitter
  Loss loss;                    // of the answers
  Pattern twice;                // answers that come twice
  Pattern late;                 // answers that come later ...
  Time lateBy{};                // ... by this
  std::uint32_t rateLimit = 0;  // errors it sends, a second; 0: no limit
  bool silent = false;

  Time linkDelay{};  // round trip over the link towards the machine
  Loss linkLoss;     // on that link, on the way out
  Beyond beyond = Beyond::Passes;
  std::uint32_t mtu = 0;  // longest packet it passes on, in bytes; 0: any
};

// Sets what a key says. False when a router, or a host, has no such key. Throws
// std::invalid_argument with a sentence for a value that is none of its kind.
bool setBehaviour(Behaviour& behaviour, bool router, std::string_view key, std::string_view value);

// All keys of a router's or a host's behaviour: "delay, jitter, ...".
std::string behaviourKeys(bool router);

// Throws std::invalid_argument with the end of a sentence ("has ...") when values
// contradict each other.
void checkBehaviour(const Behaviour& behaviour);

}  // namespace veltrin::lab
