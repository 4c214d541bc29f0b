// SPDX-License-Identifier: GPL-3.0-or-later
// The registry of Linux.
#pragma once

#include <string>

#include "platform/portable/file_registry.h"

namespace veltrin {

// A registry in one text file. It has from the start what Windows has and the program
// does not make for itself: the key of the network interfaces' settings.
class LinuxRegistry : public FileRegistry {
 public:
  // `file` is the system's own path. It is written only when a key is missing in it; where
  // it cannot be written, the key stays missing.
  explicit LinuxRegistry(std::string file);
};

}  // namespace veltrin
