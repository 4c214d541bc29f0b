// SPDX-License-Identifier: GPL-3.0-or-later
// An IPv4 or IPv6 address, with the interface that a link-local one belongs to.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace veltrin {

enum class Family { IPv4, IPv6 };

struct Address {
  Family family = Family::IPv4;
  // Network order; IPv4 fills the first four bytes.
  std::array<std::uint8_t, 16> bytes{};
  // Interface index of a link-local IPv6 address; 0 when it has none.
  std::uint32_t scope = 0;

  // The usual text form; a scope follows as "%" and the interface's number.
  std::string text() const;

  // The address that `text` spells: four decimal parts, or colons with an
  // optional "%" and an interface's number or name. Nothing for any other text.
  static std::optional<Address> parse(const std::string& text);

  bool operator==(const Address&) const = default;
};

}  // namespace veltrin
