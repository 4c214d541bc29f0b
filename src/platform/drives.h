// SPDX-License-Identifier: GPL-3.0-or-later
// The room on the drives.
#pragma once

#include <cstdint>
#include <string>

namespace veltrin {

// The operations of the operating system that tell how large a drive is. A root is the
// drive's letter and a colon, with or without a backslash behind them. Where one is refused
// (no such drive, no medium in it) it is false and leaves what it was given.
class Drives {
 public:
  virtual ~Drives() = default;

  // The drive in its clusters, as many as fit into 32 bits.
  virtual bool GetDiskFreeSpaceA(const std::string& Root, std::uint32_t& SectorsPerCluster,
                                 std::uint32_t& BytesPerSector, std::uint32_t& FreeClusters,
                                 std::uint32_t& TotalClusters) = 0;

  // The drive in bytes: those that the user may take, all, and all that are free.
  virtual bool GetDiskFreeSpaceExA(const std::string& Root, std::uint64_t& FreeToCaller,
                                   std::uint64_t& Total, std::uint64_t& Free) = 0;
};

}  // namespace veltrin
