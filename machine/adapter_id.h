// SPDX-License-Identifier: GPL-3.0-or-later
// What the adapter of a network interface is known by.
#pragma once

#include <string>

#include "machine/file_tree.h"

namespace veltrin {

// What the hardware database knows the adapter of an interface ("eth0") by: the ID of its
// device, and of a virtual one that of the device of the bus that carries it. Empty for an
// interface that is software. `DeviceNames` has its name.
std::string adapterId(const FileTree& files, const std::string& interface);

}  // namespace veltrin
