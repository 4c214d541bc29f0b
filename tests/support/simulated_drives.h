// SPDX-License-Identifier: GPL-3.0-or-later
// Drives whose sizes a test tells.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/drives.h"

namespace veltrin {

class SimulatedDrives : public Drives {
 public:
  struct Clusters {
    std::uint32_t sectorsPerCluster = 0;
    std::uint32_t bytesPerSector = 512;
    std::uint32_t free = 0;
    std::uint32_t total = 0;
  };
  struct Bytes {
    std::uint64_t freeToCaller = 0;
    std::uint64_t total = 0;
    std::uint64_t free = 0;
  };
  std::map<std::string, Clusters> clusters;  // by root; others are refused
  std::map<std::string, Bytes> bytes;        // by root; others are refused
  std::vector<std::string> calls;            // "GetDiskFreeSpaceA C:\", in their order

  bool GetDiskFreeSpaceA(const std::string& Root, std::uint32_t& SectorsPerCluster,
                         std::uint32_t& BytesPerSector, std::uint32_t& FreeClusters,
                         std::uint32_t& TotalClusters) override;
  bool GetDiskFreeSpaceExA(const std::string& Root, std::uint64_t& FreeToCaller,
                           std::uint64_t& Total, std::uint64_t& Free) override;
};

}  // namespace veltrin
