// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/address.h"

#include <arpa/inet.h>
#include <charconv>
#include <net/if.h>
#include <system_error>

namespace veltrin {
namespace {

// The interface that a number or a name means; 0 when there is none.
std::uint32_t scopeOf(const std::string& text) {
  std::uint32_t number = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec == std::errc{} && read.ptr == end) {
    return number;
  }
  return if_nametoindex(text.c_str());
}

}  // namespace

std::string Address::text() const {
  std::array<char, INET6_ADDRSTRLEN> form{};
  const int system = family == Family::IPv4 ? AF_INET : AF_INET6;
  inet_ntop(system, bytes.data(), form.data(), form.size());
  std::string text = form.data();
  if (scope != 0) {
    text += '%';
    text += std::to_string(scope);
  }
  return text;
}

std::optional<Address> Address::parse(const std::string& text) {
  Address address;
  if (inet_pton(AF_INET, text.c_str(), address.bytes.data()) == 1) {
    return address;
  }
  address.family = Family::IPv6;
  const std::size_t percent = text.find('%');
  if (inet_pton(AF_INET6, text.substr(0, percent).c_str(), address.bytes.data()) != 1) {
    return std::nullopt;
  }
  if (percent != std::string::npos) {
    address.scope = scopeOf(text.substr(percent + 1));
    if (address.scope == 0) {
      return std::nullopt;
    }
  }
  return address;
}

}  // namespace veltrin
