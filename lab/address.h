// SPDX-License-Identifier: GPL-3.0-or-later
// An address of the Internet, version 4 or 6.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace veltrin::lab {

enum class Family { V4, V6 };

// A value: compared, copied and used as a key like a number.
class IpAddress {
 public:
  // Bytes of an address in a packet.
  static constexpr std::size_t kV4Length = 4;
  static constexpr std::size_t kV6Length = 16;

  // 0.0.0.0.
  IpAddress() = default;

  // From 4 or 16 bytes in network order; throws std::invalid_argument for any
  // other number of bytes.
  explicit IpAddress(std::span<const std::uint8_t> bytes);

  // Reads "192.0.2.1" or "2001:db8::1"; nothing for any other text.
  static std::optional<IpAddress> parse(std::string_view text);

  Family family() const { return family_; }

  // The 4 or 16 bytes in network order. They live as long as this object.
  std::span<const std::uint8_t> bytes() const;

  // The shortest usual form, lower case (RFC 5952 for version 6).
  std::string text() const;

  // The name under which the DNS keeps the name of this address, in lower case
  // and without a final dot (RFC 1035 section 3.5, RFC 3596 section 2.5).
  std::string reverseName() const;

  auto operator<=>(const IpAddress&) const = default;

 private:
  Family family_ = Family::V4;
  std::array<std::uint8_t, kV6Length> bytes_{};
};

}  // namespace veltrin::lab
