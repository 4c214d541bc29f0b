// SPDX-License-Identifier: GPL-3.0-or-later
// An address of the Internet, version 4 or 6, of a caller or of this machine.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace veltrin::endpoint {

// A value: compared, copied and used as a key like a number. It has no port and no
// scope.
class Address {
 public:
  // Bytes of an address in a packet.
  static constexpr std::size_t kV4Length = 4;
  static constexpr std::size_t kV6Length = 16;

  // 0.0.0.0.
  Address() = default;

  // From 4 or 16 bytes in network order; throws std::invalid_argument for any other
  // number. The form in which a socket for both versions tells a caller of version 4
  // (::ffff:0:0/96, RFC 4291 section 2.5.5.2) becomes the address of version 4.
  explicit Address(std::span<const std::uint8_t> bytes);

  // Reads "192.0.2.1" or "2001:db8::1"; nothing for any other text.
  static std::optional<Address> parse(std::string_view text);

  bool isV6() const { return isV6_; }

  // The 4 or 16 bytes in network order. They live as long as this object.
  std::span<const std::uint8_t> bytes() const;

  // "192.0.2.1", or the shortest usual form of version 6 in lower case.
  std::string text() const;

  // What counts as one caller's address when callers are counted: all of version 4,
  // the first 64 bits of version 6. A household is given as many addresses of version
  // 6 as fill the rest (RFC 6177), so single ones tell nobody from anybody.
  Address household() const;

  auto operator<=>(const Address&) const = default;

 private:
  bool isV6_ = false;
  std::array<std::uint8_t, kV6Length> bytes_{};
};

}  // namespace veltrin::endpoint
