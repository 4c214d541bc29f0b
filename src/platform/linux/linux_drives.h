// The room on the drives of Linux.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "machine/file_tree.h"
#include "machine/linux_machine.h"
#include "machine/machine.h"
#include "machine/volumes.h"
#include "platform/drives.h"

namespace veltrin {

// The drives are those of machine/volumes.h, which also tells what counts as their room. A
// cluster is a file system's block, and on one of more than 2^32 blocks several of them.
//
// A server that is gone would hold up whoever asks for the room on it, for ever. So drives of
// the network are asked on a thread beside, and one that does not answer in time is refused.
class LinuxDrives : public Drives {
 public:
  using Patience = std::chrono::milliseconds;
  static constexpr Patience kPatience{1000};

  explicit LinuxDrives(FileTree files = FileTree(),
                       std::shared_ptr<const Machine> machine = std::make_shared<LinuxMachine>(),
                       Patience patience = kPatience)
      : files_(std::move(files)), machine_(std::move(machine)), patience_(patience) {}

  bool GetDiskFreeSpaceA(const std::string& Root, std::uint32_t& SectorsPerCluster,
                         std::uint32_t& BytesPerSector, std::uint32_t& FreeClusters,
                         std::uint32_t& TotalClusters) override;
  bool GetDiskFreeSpaceExA(const std::string& Root, std::uint64_t& FreeToCaller,
                           std::uint64_t& Total, std::uint64_t& Free) override;

 private:
  std::optional<FileSystemRoom> room(const std::string& root) const;
  std::optional<FileSystemRoom> roomInTime(const Volume& volume) const;

  FileTree files_;
  std::shared_ptr<const Machine> machine_;
  Patience patience_;
};

// Blocks of a file system as clusters that fit into 32 bits.
struct ClusterCount {
  std::uint32_t sectorsPerCluster = 0;  // of 512 bytes
  std::uint32_t free = 0;
  std::uint32_t total = 0;
};
ClusterCount clustersOf(std::uint64_t blockSize, std::uint64_t free, std::uint64_t total);

}  // namespace veltrin
