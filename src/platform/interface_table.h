// SPDX-License-Identifier: GPL-3.0-or-later
// The operating system's table of network interfaces.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace veltrin {

// One interface in the table, field by field as the system keeps it (ifmib.h); 860 bytes,
// numbers in the machine's order. The description alone is not in the system's code page.
struct MIB_IFROW {
  std::array<std::uint8_t, 512> wszName{};  // 256 characters of UTF-16
  std::uint32_t dwIndex = 0;
  std::uint32_t dwType = 0;   // IANA's ifType
  std::uint32_t dwMtu = 0;    // bytes
  std::uint32_t dwSpeed = 0;  // bits per second
  std::uint32_t dwPhysAddrLen = 0;
  std::array<std::uint8_t, 8> bPhysAddr{};
  std::uint32_t dwAdminStatus = 0;
  std::uint32_t dwOperStatus = 0;
  std::uint32_t dwLastChange = 0;
  std::uint32_t dwInOctets = 0;
  std::uint32_t dwInUcastPkts = 0;
  std::uint32_t dwInNUcastPkts = 0;
  std::uint32_t dwInDiscards = 0;
  std::uint32_t dwInErrors = 0;
  std::uint32_t dwInUnknownProtos = 0;
  std::uint32_t dwOutOctets = 0;
  std::uint32_t dwOutUcastPkts = 0;
  std::uint32_t dwOutNUcastPkts = 0;
  std::uint32_t dwOutDiscards = 0;
  std::uint32_t dwOutErrors = 0;
  std::uint32_t dwOutQLen = 0;
  std::uint32_t dwDescrLen = 0;
  std::array<std::uint8_t, 256> bDescr{};  // the adapter's description in UTF-8
};
static_assert(sizeof(MIB_IFROW) == 860);

// Answers of GetIfTable besides 0 (winerror.h).
inline constexpr std::uint32_t kErrorNotSupported = 50;
inline constexpr std::uint32_t kErrorInsufficientBuffer = 122;

class InterfaceTable {
 public:
  virtual ~InterfaceTable() = default;

  // Copies the table into `size` bytes at `table`: the number of rows in four bytes, then
  // the rows (MIB_IFTABLE). Without a table, or with one that is too small, `size` becomes
  // what it takes, and the answer is kErrorInsufficientBuffer. `order` sorts the rows by
  // their index.
  virtual std::uint32_t GetIfTable(std::uint8_t* table, std::uint32_t& size, bool order) = 0;
};

}  // namespace veltrin
