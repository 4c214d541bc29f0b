// SPDX-License-Identifier: GPL-3.0-or-later
// The room on the drives of Linux.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "machine/file_tree.h"
#include "machine/linux_machine.h"
#include "machine/machine.h"
#include "machine/timed_questions.h"
#include "machine/timed_room.h"
#include "platform/drives.h"

namespace veltrin {

// The drives are those of machine/volumes.h, which also tells what counts as their room. A
// cluster is a file system's block, and on one of more than 2^32 blocks several of them.
// One that is served by others and does not answer in time is refused.
class LinuxDrives : public Drives {
 public:
  explicit LinuxDrives(FileTree files = FileTree(),
                       std::shared_ptr<const Machine> machine = std::make_shared<LinuxMachine>(),
                       TimedQuestions questions = TimedQuestions())
      : files_(files), rooms_(std::move(files), std::move(machine), std::move(questions)) {}

  bool GetDiskFreeSpaceA(const std::string& Root, std::uint32_t& SectorsPerCluster,
                         std::uint32_t& BytesPerSector, std::uint32_t& FreeClusters,
                         std::uint32_t& TotalClusters) override;
  bool GetDiskFreeSpaceExA(const std::string& Root, std::uint64_t& FreeToCaller,
                           std::uint64_t& Total, std::uint64_t& Free) override;

 private:
  std::optional<FileSystemRoom> room(const std::string& root) const;

  FileTree files_;
  TimedRoom rooms_;
};

// Blocks of a file system as clusters that fit into 32 bits.
struct ClusterCount {
  std::uint32_t sectorsPerCluster = 0;  // of 512 bytes
  std::uint32_t free = 0;
  std::uint32_t total = 0;
};
ClusterCount clustersOf(std::uint64_t blockSize, std::uint64_t free, std::uint64_t total);

}  // namespace veltrin
