// The network interface inside the lab: a TUN device, whose packets the
// simulation reads and writes.
#pragma once

#include "lab/descriptor.h"
#include "lab/scenario.h"

namespace veltrin::lab {

// Makes the TUN device in the present network namespace and brings it and the
// loopback up with the scenario's addresses and default routes. The device
// carries bare IP packets, one for each read and write, never blocks, and goes
// when the descriptor is closed. Where the kernel has no IPv6, the scenario's
// IPv6 addresses are left out. Throws CannotRun.
Descriptor makeInterface(const Scenario& scenario);

}  // namespace veltrin::lab
