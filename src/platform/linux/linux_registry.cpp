// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_registry.h"

#include <utility>

namespace veltrin {

LinuxRegistry::LinuxRegistry(std::string file) : FileRegistry(std::move(file)) {
  createKey(kHkeyLocalMachine, kInterfacesKey);
}

}  // namespace veltrin
