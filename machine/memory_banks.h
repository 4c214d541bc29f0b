// SPDX-License-Identifier: GPL-3.0-or-later
// The sockets of memory modules.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "machine/file_tree.h"
#include "machine/smbios.h"

namespace veltrin {

struct MemoryBank {
  std::string locator;                 // printed beside the socket: "DIMM 0"
  std::string bank;                    // "BANK 0"
  std::optional<std::uint64_t> bytes;  // nothing in an empty socket
  std::optional<std::uint64_t> speed;  // megatransfers in a second, which modules are sold by

  bool operator==(const MemoryBank&) const = default;
};

// The sockets in the order of the firmware's table. It is root's on most systems, and then they
// come from what udev noted when the system started. A module of unknown size is left out, as it
// would pass for an empty socket.
std::vector<MemoryBank> memoryBanks(const FileTree& files);

// Those of the structures Memory Device (section 7.18).
std::vector<MemoryBank> banksIn(const SmbiosTable& table);

// Those of udev's notes on a device: lines "E:MEMORY_DEVICE_0_SIZE=17179869184", as its program
// dmi_memory_id makes them of the same table.
std::vector<MemoryBank> banksInNotes(std::string_view notes);

}  // namespace veltrin
