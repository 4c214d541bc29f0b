// SPDX-License-Identifier: GPL-3.0-or-later
// A made-up machine with disks, and file systems that are mounted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "temporary_tree.h"

namespace veltrin {

class BlockTree : public TemporaryTree {
 public:
  // A whole device: where it hangs below /sys/devices ("pci0000:00/.../ata1/host0"), its
  // name, and its size in sectors of 512 bytes.
  void disk(const std::string& place, const std::string& name, const std::string& numbers,
            std::uint64_t sectors) {
    const std::string folder = "/sys/devices/" + place + "/block/" + name;
    device(folder, name, numbers, sectors);
    link("/sys/block/" + name, "../devices/" + place + "/block/" + name);
    put(folder + "/queue/logical_block_size", "512\n");
    put(folder + "/removable", "0\n");
    folderOfDisk_ = folder;
  }

  // A partition of the disk that was put last, with its number behind the disk's name.
  void partition(const std::string& name, const std::string& numbers, std::uint64_t sectors) {
    const std::string folder = folderOfDisk_ + "/" + name;
    device(folder, name, numbers, sectors);
    put(folder + "/partition", name.substr(name.find_last_not_of("0123456789") + 1) + "\n");
  }

  // What is put together from other devices: "dm-0", "md0".
  void stacked(const std::string& name, const std::string& numbers, std::uint64_t sectors,
               const std::vector<std::string>& parts) {
    disk("virtual", name, numbers, sectors);
    for (const std::string& part : parts) {
      link(std::string(folderOfDisk_).append("/slaves/").append(part), "../../" + part);
      put(std::string("/sys/class/block/").append(part).append("/holders/").append(name), "");
    }
  }

  // One more fact of the disk that was put last, by its path below the disk's folder.
  void fact(const std::string& path, const std::string& text) const {
    put(folderOfDisk_ + "/" + path, text + "\n");
  }

  void mount(const std::string& numbers, const std::string& folder, const std::string& type,
             const std::string& source, const std::string& part = "/",
             const std::string& options = "rw") {
    mounts_.push_back({folder, numbers + " " + part + " " + folder + " rw,relatime shared:1 - " +
                                   type + " " + source + " " + options + "\n"});
    std::string table;
    for (std::size_t mount = 0; mount < mounts_.size(); ++mount) {
      table += std::to_string(kFirstId + mount) + " " + std::to_string(parentOf(mount)) + " " +
               mounts_[mount].second;
    }
    put("/proc/self/mountinfo", table);
  }

  // What udev knows of the device with these numbers, a line for each.
  void udev(const std::string& numbers, const std::string& properties) const {
    put("/run/udev/data/b" + numbers, "S:disk/by-path/x\nI:1234567\n" + properties);
  }

 private:
  static constexpr std::size_t kFirstId = 21;

  // The ID of the one before on the same folder, or else of the nearest one above.
  std::size_t parentOf(std::size_t mount) const {
    const std::string& folder = mounts_[mount].first;
    std::size_t parent = 1;
    std::size_t length = 0;
    for (std::size_t other = 0; other < mounts_.size(); ++other) {
      const std::string& above = mounts_[other].first;
      const bool isAbove =
          above == folder ? other < mount : above == "/" || folder.starts_with(above + "/");
      if (isAbove && above.size() >= length) {
        parent = kFirstId + other;
        length = above.size();
      }
    }
    return parent;
  }

  void device(const std::string& folder, const std::string& name, const std::string& numbers,
              std::uint64_t sectors) {
    put(folder + "/dev", numbers + "\n");
    put(folder + "/size", std::to_string(sectors) + "\n");
    link("/sys/class/block/" + name, "../.." + folder.substr(4));
    link("/sys/dev/block/" + numbers, "../.." + folder.substr(4));
  }

  std::string folderOfDisk_;
  std::vector<std::pair<std::string, std::string>> mounts_;  // folders, and the rest of a line
};

}  // namespace veltrin
