// SPDX-License-Identifier: GPL-3.0-or-later
// Addresses in the form in which sockets take and give them.
#pragma once

#include <netinet/in.h>
#include <optional>
#include <sys/socket.h>

#include "machine/address.h"

namespace veltrin {

// Room for a socket address of either family.
union SocketAddress {
  sockaddr any;
  sockaddr_in v4;
  sockaddr_in6 v6;
};

// The bytes that a family's form takes of the union.
socklen_t sizeOf(Family family);

// Port 0.
SocketAddress toSocketAddress(const Address& address);

// Nothing for any other family or a form that is too short.
std::optional<Address> fromSocketAddress(const sockaddr* address, std::size_t size);

}  // namespace veltrin
