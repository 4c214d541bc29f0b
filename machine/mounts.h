// What the system was started from.
#pragma once

#include <string>

#include "machine/file_tree.h"

namespace veltrin {

// The device that holds /boot, or / where that is no file system of its own:
// "/dev/nvme0n1p2". Empty when it lies on no device, as in a container.
std::string bootDevice(const FileTree& files);

}  // namespace veltrin
