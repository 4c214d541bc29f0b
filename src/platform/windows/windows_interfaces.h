// SPDX-License-Identifier: GPL-3.0-or-later
// The table of network interfaces of Windows.
#pragma once

#include "platform/interface_table.h"

namespace veltrin {

// The call of the IP Helper. Descriptions are made UTF-8 in their places; one that grows
// above its field by that loses its last characters.
class WindowsInterfaces : public InterfaceTable {
 public:
  std::uint32_t GetIfTable(std::uint8_t* table, std::uint32_t& size, bool order) override;
};

// Makes the description of a row UTF-8, of as many bytes as its length then tells.
void translateDescription(MIB_IFROW& row);

}  // namespace veltrin
