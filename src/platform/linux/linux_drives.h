// The room on the drives of Linux.
#pragma once

#include <string>
#include <utility>

#include "platform/drives.h"

namespace veltrin {

// Asks the file systems (statvfs(3)) that bear the letters of drive_folders.h. A cluster is
// a file system's block, and on one of more than 2^32 blocks several of them.
class LinuxDrives : public Drives {
 public:
  // `mounts` is the kernel's table of what is mounted.
  explicit LinuxDrives(std::string mounts = "/proc/self/mounts") : mounts_(std::move(mounts)) {}

  bool GetDiskFreeSpaceA(const std::string& Root, std::uint32_t& SectorsPerCluster,
                         std::uint32_t& BytesPerSector, std::uint32_t& FreeClusters,
                         std::uint32_t& TotalClusters) override;
  bool GetDiskFreeSpaceExA(const std::string& Root, std::uint64_t& FreeToCaller,
                           std::uint64_t& Total, std::uint64_t& Free) override;

 private:
  std::string folderOf(const std::string& root) const;

  std::string mounts_;
};

// Blocks of a file system as clusters that fit into 32 bits.
struct ClusterCount {
  std::uint32_t sectorsPerCluster = 0;  // of 512 bytes
  std::uint32_t free = 0;
  std::uint32_t total = 0;
};
ClusterCount clustersOf(std::uint64_t blockSize, std::uint64_t free, std::uint64_t total);

}  // namespace veltrin
