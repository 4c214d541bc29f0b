// SPDX-License-Identifier: GPL-3.0-or-later
// What is mounted where.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

// A file system at the place where it is mounted (proc_pid_mountinfo(5)).
struct Mount {
  std::string numbers;  // of its device, "259:2"; the first is 0 where the kernel counts none
  std::string part;     // the folder of the file system that is mounted; "/" for all of it
  std::string folder;   // where it is
  std::string type;     // "ext4"
  std::string source;   // "/dev/nvme0n1p2", "server:/home"; "none" or the like without one
  std::string options;  // of the file system, "rw,errors=remount-ro"
};

// The kernel's list of mounts, read line by line.
class MountTable {
 public:
  // A line without its end. One of another form is left out.
  void take(std::string_view line);

  // Those that a path leads to, in the kernel's order, one for each folder: what is mounted there
  // last hides the rest, and all that was mounted below the folder before.
  std::vector<Mount> visible() const;

 private:
  struct Row {
    std::string id;
    std::string parent;  // the ID of what it is mounted on, which may not be in the list
    Mount mount;
  };

  bool isCovered(const Row& row) const;
  bool isPassedBy(const Row& row) const;
  bool isOutOfReach(const Row& start) const;

  std::vector<Row> rows_;
  std::map<std::string, std::size_t> byId_;
  std::map<std::pair<std::string, std::string>, std::size_t> lastAt_;  // by parent and folder
};

// All that this process sees, as the table tells it. Plain files that are mounted are none.
std::vector<Mount> mountsOf(const FileTree& files);

// The kernel's name of the block device of a file system ("sda2", "dm-0"), which is its folder
// in /sys/class/block; empty when it lies on none, and when /sys does not tell.
std::string blockDeviceOf(const FileTree& files, const Mount& mount);

// The device that holds /boot, or / where that is no file system of its own:
// "/dev/nvme0n1p2". Empty when it lies on no device, as in a container.
std::string bootDevice(const FileTree& files);

}  // namespace veltrin
