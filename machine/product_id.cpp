// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/product_id.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace veltrin {
namespace {

// Digits and letters of which none is taken for another.
constexpr std::string_view kSymbols = "0123456789ABCDEFGHJKMNPQRSTVWXYZ";
constexpr std::size_t kGroups = 4;
constexpr std::size_t kSymbolsOfGroup = 5;

// The bytes that are the hash's alone. Those at 6 and 8 hold the version and the variant
// too, which are the same in every ID (RFC 9562 section 5.4).
constexpr std::array<std::size_t, 14> kChance{0, 1, 2, 3, 4, 5, 7, 9, 10, 11, 12, 13, 14, 15};
static_assert(kGroups * kSymbolsOfGroup * 5 < (kChance.size() - 1) * 8);

// Five bits for each symbol, the highest first.
char symbolAt(const Id128& id, std::size_t index) {
  const std::size_t bit = index * 5;
  const unsigned pair = static_cast<unsigned>(id[kChance[bit / 8]]) << 8 | id[kChance[bit / 8 + 1]];
  return kSymbols[pair >> (11 - bit % 8) & 0x1F];
}

}  // namespace

std::string productId(const Machine& machine) {
  const auto told = machine.applicationId(kProductApplication);
  if (!told) {
    return "";
  }
  std::string id;
  for (std::size_t i = 0; i < kGroups * kSymbolsOfGroup; ++i) {
    if (i > 0 && i % kSymbolsOfGroup == 0) {
      id += '-';
    }
    id += symbolAt(*told, i);
  }
  return id;
}

}  // namespace veltrin
