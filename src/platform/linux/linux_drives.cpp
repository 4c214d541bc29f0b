// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_drives.h"

#include <algorithm>
#include <limits>

namespace veltrin {
namespace {

constexpr std::uint32_t kSector = 512;  // bytes

}  // namespace

ClusterCount clustersOf(std::uint64_t blockSize, std::uint64_t free, std::uint64_t total) {
  std::uint64_t sectors = std::max<std::uint64_t>(blockSize / kSector, 1);
  while (total > std::numeric_limits<std::uint32_t>::max()) {
    total /= 2;
    free /= 2;
    sectors *= 2;
  }
  return {static_cast<std::uint32_t>(sectors), static_cast<std::uint32_t>(free),
          static_cast<std::uint32_t>(total)};
}

bool LinuxDrives::GetDiskFreeSpaceA(const std::string& Root, std::uint32_t& SectorsPerCluster,
                                    std::uint32_t& BytesPerSector, std::uint32_t& FreeClusters,
                                    std::uint32_t& TotalClusters) {
  const auto told = room(Root);
  if (!told) return false;
  const ClusterCount clusters = clustersOf(told->block, told->available, told->total);
  SectorsPerCluster = clusters.sectorsPerCluster;
  BytesPerSector = kSector;
  FreeClusters = clusters.free;
  TotalClusters = clusters.total;
  return true;
}

bool LinuxDrives::GetDiskFreeSpaceExA(const std::string& Root, std::uint64_t& FreeToCaller,
                                      std::uint64_t& Total, std::uint64_t& Free) {
  const auto told = room(Root);
  if (!told) return false;
  FreeToCaller = told->available * told->block;
  Total = told->total * told->block;
  Free = told->free * told->block;
  return true;
}

// What is mounted may have changed since the last question.
std::optional<FileSystemRoom> LinuxDrives::room(const std::string& root) const {
  const auto volume = volumeAt(files_, root);
  if (!volume) return std::nullopt;
  return rooms_.of(*volume);
}

}  // namespace veltrin
