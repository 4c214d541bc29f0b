// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/address.h"

#include <algorithm>
#include <arpa/inet.h>
#include <stdexcept>

namespace veltrin::lab {

IpAddress::IpAddress(std::span<const std::uint8_t> bytes) {
  if (bytes.size() != kV4Length && bytes.size() != kV6Length) {
    throw std::invalid_argument("an address has 4 or 16 bytes");
  }
  family_ = bytes.size() == kV4Length ? Family::V4 : Family::V6;
  std::copy(bytes.begin(), bytes.end(), bytes_.begin());
}

std::optional<IpAddress> IpAddress::parse(std::string_view text) {
  const std::string terminated(text);
  if (terminated.find('\0') != std::string::npos) return std::nullopt;
  IpAddress address;
  if (inet_pton(AF_INET, terminated.c_str(), address.bytes_.data()) == 1) return address;
  address.bytes_ = {};
  address.family_ = Family::V6;
  if (inet_pton(AF_INET6, terminated.c_str(), address.bytes_.data()) == 1) return address;
  return std::nullopt;
}

std::span<const std::uint8_t> IpAddress::bytes() const {
  return std::span(bytes_).first(family_ == Family::V4 ? kV4Length : kV6Length);
}

std::string IpAddress::text() const {
  std::array<char, INET6_ADDRSTRLEN> buffer{};
  const int family = family_ == Family::V4 ? AF_INET : AF_INET6;
  inet_ntop(family, bytes_.data(), buffer.data(), buffer.size());
  return buffer.data();
}

std::string IpAddress::reverseName() const {
  static constexpr std::string_view kDigits = "0123456789abcdef";
  std::string name;
  const auto all = bytes();
  for (auto byte = all.rbegin(); byte != all.rend(); ++byte) {
    if (family_ == Family::V4) {
      name += std::to_string(*byte) + '.';
    } else {
      name += {kDigits[*byte & 0x0F], '.', kDigits[*byte >> 4], '.'};
    }
  }
  return name + (family_ == Family::V4 ? "in-addr.arpa" : "ip6.arpa");
}

}  // namespace veltrin::lab
