// SPDX-License-Identifier: GPL-3.0-or-later
// A network interface inside the lab: a TUN device, whose packets the simulation
// reads and writes.
#pragma once

#include "lab/descriptor.h"
#include "lab/scenario.h"

namespace veltrin::lab {

// What an interface is to have.
struct InterfacePlan {
  std::vector<MachineAddress> addresses;
  std::vector<IpAddress> gateways;  // at most one of each family
  std::uint32_t mtu = 1500;         // bytes
};

// Makes the TUN device in the present network namespace and brings it and the
// loopback up with the plan's addresses and a default route of each of their families.
// The device carries bare IP packets, one for each read and write, never blocks, and goes
// when the descriptor is closed. Where the kernel has no IPv6, the plan's
// IPv6 addresses are left out. Throws CannotRun.
Descriptor makeInterface(const InterfacePlan& plan);

}  // namespace veltrin::lab
