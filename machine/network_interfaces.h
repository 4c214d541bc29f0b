// SPDX-License-Identifier: GPL-3.0-or-later
// The interfaces of a machine from what its kernel told of its network devices.
#pragma once

#include <vector>

#include "machine/link_dump.h"
#include "machine/machine.h"

namespace veltrin {

// In the order of their indexes, without the loopback interface; of several with one index
// the first. Addresses are in the kernel's order.
std::vector<NetworkInterface> networkInterfaces(const LinkDump& dump);

}  // namespace veltrin
