// SPDX-License-Identifier: GPL-3.0-or-later
// The few requests to the kernel's network tables that the lab makes (rtnetlink).
#pragma once

#include <cstdint>
#include <optional>

#include "lab/address.h"
#include "lab/descriptor.h"

namespace veltrin::lab {

// Every call waits for the kernel's word and throws CannotRun when it refuses.
class Rtnetlink {
 public:
  Rtnetlink();

  // Brings an interface up, with another MTU in bytes when one is given.
  void bringUp(unsigned interface, std::optional<std::uint32_t> mtu);

  // Gives an interface an address that is usable at once.
  void addAddress(unsigned interface, const IpAddress& address, std::uint8_t prefixLength);

  // Sends everything without a better route through an interface. The gateway is
  // of the same family and in the network of one of its addresses.
  void addDefaultRoute(unsigned interface, Family family, std::optional<IpAddress> gateway);

 private:
  class Request;

  void send(Request& request, const char* purpose);

  Descriptor socket_;
};

}  // namespace veltrin::lab
