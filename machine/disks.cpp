// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/disks.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "machine/fact_text.h"
#include "machine/mounts.h"
#include "machine/udev_record.h"

namespace veltrin {
namespace {

// /sys counts in these whatever the device's own sectors are.
constexpr std::uint64_t kSector = 512;

// The kernel shows an extended partition as one that has room for a boot loader alone: two
// sectors, or a larger one of the disk (block/partitions/msdos.c).
constexpr std::uint64_t kLargestExtended = 8 * kSector;

// What is put together from other devices is put together from few at most.
constexpr int kDeepest = 8;

const std::string kClass = "/sys/class/block/";

std::string fact(const FileTree& files, const std::string& name, const std::string& file) {
  return files.line(kClass + name + "/" + file);
}

// The folders in which the kernel keeps a device, from /sys/devices on.
std::string pathOf(const FileTree& files, const std::string& name) {
  return files.linkTarget(kClass + name);
}

// Whether a folder of the path begins with a word, and goes on with a digit.
bool leadsThrough(std::string_view path, std::string_view word) {
  for (std::size_t at = path.find(word); at != std::string_view::npos;
       at = path.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    if (at > 0 && path[at - 1] == '/' && end < path.size() && path[end] >= '0' &&
        path[end] <= '9') {
      return true;
    }
  }
  return false;
}

DiskBus busOf(const std::string& name, std::string_view path) {
  constexpr std::array<std::pair<std::string_view, DiskBus>, 5> kBuses{{
      {"usb", DiskBus::Usb},
      {"fw", DiskBus::FireWire},
      {"ata", DiskBus::Ata},
      {"host", DiskBus::Scsi},
      {"virtio", DiskBus::Virtio},
  }};
  if (name.starts_with("nvme")) {
    return DiskBus::Nvme;
  }
  for (const auto& [word, bus] : kBuses) {
    if (leadsThrough(path, word)) {
      return bus;
    }
  }
  return DiskBus::Other;
}

bool comesAndGoes(const FileTree& files, const std::string& name) {
  const DiskBus bus = busOf(name, pathOf(files, name));
  return bus == DiskBus::Usb || bus == DiskBus::FireWire || fact(files, name, "removable") == "1" ||
         fact(files, name, "device/type") == "SD";
}

// The areas that an eMMC chip boots from are parts of that chip, and the blocks of a flash
// chip (mtdblock0) lie below whatever uses it.
bool isDisk(const FileTree& files, const std::string& name) {
  const bool isPart = name.starts_with("mmcblk") && (name.find("boot") != std::string::npos ||
                                                     name.find("rpmb") != std::string::npos);
  return !isPart && !name.starts_with("sr") && !name.starts_with("fd") &&
         !name.starts_with("mtdblock") && fact(files, name, "hidden") != "1" &&
         pathOf(files, name).find("/virtual/block/") == std::string::npos;
}

std::vector<std::string> partitionsOf(const FileTree& files, const std::string& name) {
  std::vector<std::string> partitions = files.names(kClass + name);
  std::erase_if(partitions, [&](const std::string& entry) {
    return !entry.starts_with(name) || fact(files, name, entry + "/partition").empty();
  });
  return partitions;
}

// An undivided disk is asked for what it bears itself.
bool isInUse(const FileTree& files, const std::string& name, const std::set<std::string>& mounted) {
  if (mounted.contains(name) || !files.names(kClass + name + "/holders").empty()) {
    return true;
  }
  const UdevRecord record(files, "b" + numbersOfDevice(files, name));
  return !record.value("ID_FS_USAGE").empty() && record.value("ID_PART_TABLE_TYPE").empty();
}

int countPartitions(const FileTree& files, const std::string& name,
                    const std::set<std::string>& mounted) {
  const std::vector<std::string> partitions = partitionsOf(files, name);
  if (partitions.empty()) {
    return isInUse(files, name, mounted) ? 1 : 0;
  }
  return static_cast<int>(
      std::count_if(partitions.begin(), partitions.end(), [&](const std::string& each) {
        return bytesOfDevice(files, name + "/" + each).value_or(0) > kLargestExtended;
      }));
}

// The maker of an ATA disk is part of its model; a number is that of a PCI device.
std::string makerOf(const FileTree& files, const std::string& name) {
  std::string maker = printable(fact(files, name, "device/vendor"));
  return maker == "ATA" || maker.starts_with("0x") ? "" : maker;
}

// The kernel's own is cut off behind 16 characters for ATA disks; udev asks these themselves.
std::string modelOf(const FileTree& files, const std::string& name) {
  const UdevRecord record(files, "b" + numbersOfDevice(files, name));
  std::string model = printable(record.decoded("ID_MODEL_ENC"));
  for (const char* file : {"device/model", "device/name"}) {
    if (model.empty()) {
      model = printable(fact(files, name, file));
    }
  }
  const std::string maker = makerOf(files, name);
  if (model.empty() || maker.empty() || model.starts_with(maker)) {
    return model;
  }
  return maker + " " + model;
}

Disk diskOf(const FileTree& files, const std::string& name, const std::set<std::string>& mounted) {
  return {name,
          modelOf(files, name),
          busOf(name, pathOf(files, name)),
          comesAndGoes(files, name),
          bytesOfDevice(files, name),
          wholeNumber(fact(files, name, "queue/logical_block_size")),
          countPartitions(files, name, mounted)};
}

bool standsBefore(const Disk& left, const Disk& right) {
  const auto rank = [](const Disk& disk) {
    return std::make_tuple(disk.external, disk.name.size(), std::string_view(disk.name));
  };
  return rank(left) < rank(right);
}

// The disk of a partition; empty for anything else.
std::string diskOfPartition(const FileTree& files, const std::string& name) {
  if (fact(files, name, "partition").empty()) {
    return "";
  }
  std::string path = pathOf(files, name);
  path.resize(path.rfind('/') == std::string::npos ? 0 : path.rfind('/'));
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool isExternalBelow(const FileTree& files, const std::string& name, int depth) {
  if (const std::string disk = diskOfPartition(files, name); !disk.empty()) {
    return comesAndGoes(files, disk);
  }
  const std::vector<std::string> parts = files.names(kClass + name + "/slaves");
  if (parts.empty() || depth == kDeepest) {
    return comesAndGoes(files, name);
  }
  return std::all_of(parts.begin(), parts.end(), [&](const std::string& part) {
    return isExternalBelow(files, part, depth + 1);
  });
}

}  // namespace

std::vector<Disk> disksOf(const FileTree& files) {
  std::set<std::string> mounted;
  for (const Mount& mount : mountsOf(files)) {
    mounted.insert(blockDeviceOf(files, mount));
  }
  std::vector<Disk> disks;
  for (const std::string& name : files.names("/sys/block")) {
    // A disk that its bus has just lost, or whose folder a container hides, has no size file.
    if (isDisk(files, name) && files.read(kClass + name + "/size")) {
      disks.push_back(diskOf(files, name, mounted));
    }
  }
  std::sort(disks.begin(), disks.end(), standsBefore);
  return disks;
}

std::optional<std::uint64_t> bytesOfDevice(const FileTree& files, const std::string& name) {
  constexpr std::uint64_t kMost = UINT64_MAX / kSector;
  const auto sectors = wholeNumber(fact(files, name, "size"));
  if (!sectors || *sectors == 0 || *sectors > kMost) {
    return std::nullopt;
  }
  return *sectors * kSector;
}

std::string numbersOfDevice(const FileTree& files, const std::string& name) {
  return fact(files, name, "dev");
}

bool isExternal(const FileTree& files, const std::string& name) {
  return isExternalBelow(files, name, 0);
}

}  // namespace veltrin
