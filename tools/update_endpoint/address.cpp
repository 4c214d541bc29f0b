// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/address.h"

#include <algorithm>
#include <arpa/inet.h>
#include <stdexcept>

namespace veltrin::endpoint {
namespace {

// What stands before an address of version 4 that is written in version 6.
constexpr std::array<std::uint8_t, 12> kMappedStart{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};

// The network's part of an address of version 6, in bytes.
constexpr std::ptrdiff_t kNetworkLength = 8;

}  // namespace

Address::Address(std::span<const std::uint8_t> bytes) {
  if (bytes.size() != kV4Length && bytes.size() != kV6Length) {
    throw std::invalid_argument("an address has 4 or 16 bytes");
  }
  const bool mapped = bytes.size() == kV6Length &&
                      std::equal(kMappedStart.begin(), kMappedStart.end(), bytes.begin());
  const auto kept = mapped ? bytes.last(kV4Length) : bytes;
  isV6_ = kept.size() == kV6Length;
  std::copy(kept.begin(), kept.end(), bytes_.begin());
}

std::optional<Address> Address::parse(std::string_view text) {
  const std::string terminated(text);
  if (terminated.find('\0') != std::string::npos) return std::nullopt;
  std::array<std::uint8_t, kV6Length> bytes{};
  if (inet_pton(AF_INET, terminated.c_str(), bytes.data()) == 1) {
    return Address(std::span(bytes).first(kV4Length));
  }
  if (inet_pton(AF_INET6, terminated.c_str(), bytes.data()) == 1) return Address(bytes);
  return std::nullopt;
}

std::span<const std::uint8_t> Address::bytes() const {
  return std::span(bytes_).first(isV6_ ? kV6Length : kV4Length);
}

std::string Address::text() const {
  std::array<char, INET6_ADDRSTRLEN> buffer{};
  inet_ntop(isV6_ ? AF_INET6 : AF_INET, bytes_.data(), buffer.data(), buffer.size());
  return buffer.data();
}

Address Address::household() const {
  Address household = *this;
  if (isV6_) {
    std::fill(household.bytes_.begin() + kNetworkLength, household.bytes_.end(), std::uint8_t{0});
  }
  return household;
}

}  // namespace veltrin::endpoint
