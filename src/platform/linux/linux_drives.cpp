#include "platform/linux/linux_drives.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <sstream>
#include <sys/statvfs.h>

#include "platform/linux/drive_folders.h"

namespace veltrin {
namespace {

constexpr std::uint32_t kSector = 512;  // bytes

bool ask(const std::string& folder, struct statvfs& told) {
  return !folder.empty() && statvfs(folder.c_str(), &told) == 0;
}

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
  struct statvfs told {};
  if (!ask(folderOf(Root), told)) return false;
  const ClusterCount clusters = clustersOf(told.f_frsize, told.f_bavail, told.f_blocks);
  SectorsPerCluster = clusters.sectorsPerCluster;
  BytesPerSector = kSector;
  FreeClusters = clusters.free;
  TotalClusters = clusters.total;
  return true;
}

bool LinuxDrives::GetDiskFreeSpaceExA(const std::string& Root, std::uint64_t& FreeToCaller,
                                      std::uint64_t& Total, std::uint64_t& Free) {
  struct statvfs told {};
  if (!ask(folderOf(Root), told)) return false;
  FreeToCaller = std::uint64_t{told.f_bavail} * told.f_frsize;
  Total = std::uint64_t{told.f_blocks} * told.f_frsize;
  Free = std::uint64_t{told.f_bfree} * told.f_frsize;
  return true;
}

// What is mounted may have changed since the last question.
std::string LinuxDrives::folderOf(const std::string& root) const {
  std::ostringstream table;
  table << std::ifstream(mounts_).rdbuf();
  return folderOfDrive(root, driveFolders(table.str()));
}

}  // namespace veltrin
