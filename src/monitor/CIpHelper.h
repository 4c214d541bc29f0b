// SPDX-License-Identifier: GPL-3.0-or-later
// The network interfaces of this machine with their traffic.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "monitor/CInterfaces.h"
#include "platform/interface_table.h"

namespace veltrin {

// Reads the system's table of interfaces anew whenever it is asked for them. Where the
// system gives no table there are none.
class CIpHelper {
 public:
  explicit CIpHelper(InterfaceTable& table) : table_(table) {}

  // A collection of its own for each call. One that is set is replaced by the next. Throws
  // StatementFailed at a row that cannot be taken in: kOverflow for a sum that is out of 32
  // bits, kSubscriptOutOfRange for an address of more than 8 bytes and for a table that ends
  // before its rows do. The sums are then those of the rows before.
  std::shared_ptr<CInterfaces> Interfaces();
  void Interfaces(std::shared_ptr<CInterfaces> interfaces);

  // The sums over the interfaces of the last reading, in bytes. A reading ends at the
  // interface whose bytes would take a sum out of 32 bits.
  std::int32_t BytesReceived() const { return bytesReceived_; }
  std::int32_t BytesSent() const { return bytesSent_; }

 private:
  void refresh();
  void readRow(const MIB_IFROW& row);

  InterfaceTable& table_;
  std::shared_ptr<CInterfaces> interfaces_ = std::make_shared<CInterfaces>();
  std::int32_t bytesReceived_ = 0;
  std::int32_t bytesSent_ = 0;
};

}  // namespace veltrin
