// SPDX-License-Identifier: GPL-3.0-or-later
// The devices that the firmware tells of, which are on no bus that could be searched.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

struct PnpDevice {
  std::string address;           // "00:04" on the bus of Plug and Play, "PNP0C0A:00" in ACPI
  std::vector<std::string> ids;  // "PNP0700"; the first fits best
  std::string description;       // what ACPI says of it (_STR); mostly empty
  std::string driver;            // empty when none is bound
  bool disabled = false;         // switched off in the firmware
  bool inAcpi = false;           // ACPI tells of it, too

  bool has(std::string_view id) const;
};

// The devices of the bus of Plug and Play (/sys/bus/pnp).
std::vector<PnpDevice> pnpDevices(const FileTree& files);

// The devices of ACPI that are there (/sys/bus/acpi) and have an ID of their own.
std::vector<PnpDevice> acpiDevices(const FileTree& files);

}  // namespace veltrin
