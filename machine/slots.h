// SPDX-License-Identifier: GPL-3.0-or-later
// The slots of a board for cards.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "machine/file_tree.h"
#include "machine/smbios.h"

namespace veltrin {

// Nothing where it is not told. The codes are those of the structure System Slots (DSP0134 section
// 7.10), which the kernel does not tell.
struct SlotFacts {
  std::string designation;                       // "PCIEX16_1"
  std::optional<std::uint64_t> type;             // section 7.10.1
  std::optional<std::uint64_t> width;            // section 7.10.2
  std::optional<std::uint64_t> characteristics;  // the first byte, section 7.10.6
  std::string speed;  // of its bus in the kernel's words: "8.0 GT/s PCIe", "33 MHz PCI"

  bool operator==(const SlotFacts&) const = default;
};

// The slots in the order of the firmware's table. It is root's on most systems, and then they are
// the slots that the kernel knows by name, of which it lists few on a common board.
std::vector<SlotFacts> boardSlots(const FileTree& files);

std::vector<SlotFacts> slotsIn(const SmbiosTable& table);

}  // namespace veltrin
