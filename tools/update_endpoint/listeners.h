// SPDX-License-Identifier: GPL-3.0-or-later
// The sockets on which callers arrive.
#pragma once

#include <cstdint>
#include <string>
#include <sys/socket.h>
#include <vector>

#include "tools/update_endpoint/address.h"
#include "tools/update_endpoint/descriptor.h"

namespace veltrin::endpoint {

// How many connections the kernel is to keep until they are accepted; it may cut this
// to net.core.somaxconn.
inline constexpr int kBacklog = 4096;

// A listening socket that never blocks.
struct Listener {
  Descriptor socket;
  // Whether a service manager owns it, too. What still waits in its queue when this
  // server ends is for the next one.
  bool handedOver = false;
};

// Opens a listener for each address and each port; 0 is any free port. Without an
// address they are for all of this machine's, of both versions where it has both. A
// listener for all addresses of version 6 takes callers of version 4 as well, unless an
// address of version 4 is named beside it. Throws CannotServe.
std::vector<Listener> openListeners(const std::vector<Address>& addresses,
                                    const std::vector<std::uint16_t>& ports);

// Makes listeners of sockets that were handed over. Throws CannotServe for one that
// does not listen for TCP connections.
std::vector<Listener> adoptListeners(std::vector<Descriptor> sockets);

// Where a listener listens: "192.0.2.1:31112" or "[2001:db8::1]:31112".
std::string nameOf(const Listener& listener);

// The address in one of the kernel's, which is of version 4 or 6.
Address addressIn(const sockaddr_storage& address);

}  // namespace veltrin::endpoint
