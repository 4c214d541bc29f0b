// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/simulated_drives.h"

namespace veltrin {

bool SimulatedDrives::GetDiskFreeSpaceA(const std::string& Root, std::uint32_t& SectorsPerCluster,
                                        std::uint32_t& BytesPerSector, std::uint32_t& FreeClusters,
                                        std::uint32_t& TotalClusters) {
  calls.push_back("GetDiskFreeSpaceA " + Root);
  const auto found = clusters.find(Root);
  if (found == clusters.end()) return false;
  SectorsPerCluster = found->second.sectorsPerCluster;
  BytesPerSector = found->second.bytesPerSector;
  FreeClusters = found->second.free;
  TotalClusters = found->second.total;
  return true;
}

bool SimulatedDrives::GetDiskFreeSpaceExA(const std::string& Root, std::uint64_t& FreeToCaller,
                                          std::uint64_t& Total, std::uint64_t& Free) {
  calls.push_back("GetDiskFreeSpaceExA " + Root);
  const auto found = bytes.find(Root);
  if (found == bytes.end()) return false;
  FreeToCaller = found->second.freeToCaller;
  Total = found->second.total;
  Free = found->second.free;
  return true;
}

}  // namespace veltrin
