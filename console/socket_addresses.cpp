// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/socket_addresses.h"

#include <cstring>

namespace veltrin {

socklen_t sizeOf(Family family) {
  return family == Family::IPv4 ? sizeof(sockaddr_in) : sizeof(sockaddr_in6);
}

SocketAddress toSocketAddress(const Address& address) {
  SocketAddress form{};
  if (address.family == Family::IPv4) {
    form.v4 = sockaddr_in{};
    form.v4.sin_family = AF_INET;
    std::memcpy(&form.v4.sin_addr, address.bytes.data(), sizeof form.v4.sin_addr);
  } else {
    form.v6 = sockaddr_in6{};
    form.v6.sin6_family = AF_INET6;
    form.v6.sin6_scope_id = address.scope;
    std::memcpy(&form.v6.sin6_addr, address.bytes.data(), sizeof form.v6.sin6_addr);
  }
  return form;
}

std::optional<Address> fromSocketAddress(const sockaddr* address, std::size_t size) {
  if (size < sizeof(sa_family_t)) {
    return std::nullopt;
  }
  Address result;
  if (address->sa_family == AF_INET && size >= sizeof(sockaddr_in)) {
    sockaddr_in form{};
    std::memcpy(&form, address, sizeof form);
    std::memcpy(result.bytes.data(), &form.sin_addr, sizeof form.sin_addr);
    return result;
  }
  if (address->sa_family == AF_INET6 && size >= sizeof(sockaddr_in6)) {
    sockaddr_in6 form{};
    std::memcpy(&form, address, sizeof form);
    result.family = Family::IPv6;
    result.scope = form.sin6_scope_id;
    std::memcpy(result.bytes.data(), &form.sin6_addr, sizeof form.sin6_addr);
    return result;
  }
  return std::nullopt;
}

}  // namespace veltrin
