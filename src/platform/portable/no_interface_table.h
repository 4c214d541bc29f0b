// The table of interfaces where nothing tells it.
#pragma once

#include "platform/interface_table.h"

namespace veltrin {

class NoInterfaceTable : public InterfaceTable {
 public:
  std::uint32_t GetIfTable(std::uint8_t* /*table*/, std::uint32_t& /*size*/,
                           bool /*order*/) override {
    return kErrorNotSupported;
  }
};

}  // namespace veltrin
