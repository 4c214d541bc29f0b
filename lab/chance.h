// SPDX-License-Identifier: GPL-3.0-or-later
// Chances that are the same on every system and in every run.
#pragma once

#include <cstdint>
#include <random>
#include <string_view>

#include "lab/behaviour.h"

namespace veltrin::lab {

// A number that depends on every letter of a name (FNV-1a), so that everything
// with a name has chances of its own.
constexpr std::uint64_t hashOf(std::string_view name) {
  std::uint64_t hash = 0xCBF29CE484222325ULL;
  for (const char letter : name) {
    hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001B3ULL;
  }
  return hash;
}

// Draws numbers. The same seed gives the same numbers.
class Chance {
 public:
  explicit Chance(std::uint64_t seed) : generator_(seed) {}

  // From 0 to just below 1. Unlike the library's distributions, the same on every
  // system.
  double draw() { return static_cast<double>(generator_() >> 11) * 0x1.0p-53; }

  // Whether number `number` (from 1) of what can be lost is lost. Draws whatever
  // the loss is like, so that a change of it leaves later draws as they were.
  bool loses(const Loss& loss, std::uint64_t number) {
    return draw() < loss.share || loss.pattern.picks(number);
  }

 private:
  std::mt19937_64 generator_;
};

}  // namespace veltrin::lab
