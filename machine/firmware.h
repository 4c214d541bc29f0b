// SPDX-License-Identifier: GPL-3.0-or-later
// What the firmware tells of the computer and of itself.
#pragma once

#include <string>

#include "machine/file_tree.h"

namespace veltrin {

// Empty where nothing is told.
struct FirmwareFacts {
  std::string manufacturer;  // of the computer
  std::string model;
  std::string bios;  // "Vendor version, 8/10/2025"
};

// Asks the kernel's list of SMBIOS texts, then the table itself where this user may
// read it, then the device tree that other computers have in its place.
FirmwareFacts firmwareFacts(const FileTree& files);

}  // namespace veltrin
