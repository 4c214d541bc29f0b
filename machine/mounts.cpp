// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/mounts.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// Fields of a line of mountinfo (proc_pid_mountinfo(5)); behind the one that is "-"
// follow the type of the file system, its source and its options.
constexpr std::size_t kId = 0;
constexpr std::size_t kParent = 1;
constexpr std::size_t kNumbers = 2;
constexpr std::size_t kPart = 3;
constexpr std::size_t kPlace = 4;

// The name that the kernel gives to a device without one of its own while it
// starts.
constexpr std::string_view kRoot = "/dev/root";

constexpr std::string_view kDevices = "/dev/";

std::string lastPartOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The folder above one; empty above "/".
std::string folderAbove(const std::string& folder) {
  const std::size_t slash = folder.rfind('/');
  if (slash == std::string::npos || folder.size() == 1) return "";
  return folder.substr(0, std::max<std::size_t>(slash, 1));
}

// Containers get single files of the system around them, such as /etc/hosts: parts of a file
// system on a device. Others are not looked at, as one of the network's may be out of reach.
bool isPlainFile(const FileTree& files, const Mount& mount) {
  return mount.part != "/" && mount.source.starts_with(kDevices) &&
         files.read(mount.folder, 0).has_value();
}

// The name of the device with these numbers; empty when the kernel lists none.
std::string nameOf(const FileTree& files, const std::string& numbers) {
  return lastPartOf(files.linkTarget("/sys/dev/block/" + numbers));
}

// The device as it is named to a reader; empty when the file system lies on none.
std::string deviceOf(const FileTree& files, const Mount& mount) {
  if (mount.source != kRoot) {
    return mount.source.find('/') == std::string::npos ? "" : mount.source;
  }
  const std::string name = nameOf(files, mount.numbers);
  return name.empty() ? "" : std::string(kDevices) + name;
}

}  // namespace

void MountTable::take(std::string_view line) {
  const auto fields = wordsOf(line);
  const auto dash = std::find(fields.begin(), fields.end(), "-");
  if (fields.end() - dash < 3 || dash - fields.begin() <= static_cast<std::ptrdiff_t>(kPlace)) {
    return;
  }
  Row row{std::string(fields[kId]), std::string(fields[kParent]),
          Mount{std::string(fields[kNumbers]), unescaped(fields[kPart]), unescaped(fields[kPlace]),
                std::string(dash[1]), unescaped(dash[2]),
                fields.end() - dash > 3 ? unescaped(dash[3]) : std::string()}};
  if (row.mount.folder.empty()) return;
  const std::size_t index = rows_.size();
  byId_[row.id] = index;
  // The first of all may be its own parent, and covers nothing.
  if (row.parent != row.id) lastAt_[{row.parent, row.mount.folder}] = index;
  rows_.push_back(std::move(row));
}

std::vector<Mount> MountTable::visible() const {
  std::vector<Mount> mounts;
  for (const Row& row : rows_) {
    if (!isCovered(row) && !isOutOfReach(row)) mounts.push_back(row.mount);
  }
  return mounts;
}

// What is mounted on the very folder of another one has that one for its parent.
bool MountTable::isCovered(const Row& row) const {
  return lastAt_.contains({row.id, row.mount.folder});
}

// What is mounted below a folder before the folder itself has the same parent: from then on the
// way down leads elsewhere. Of two on one place the later one counts.
bool MountTable::isPassedBy(const Row& row) const {
  if (row.parent == row.id) return false;
  const auto last = lastAt_.find({row.parent, row.mount.folder});
  if (last != lastAt_.end() && &rows_[last->second] != &row) return true;
  std::string above = folderAbove(row.mount.folder);
  for (; !above.empty(); above = folderAbove(above)) {
    if (lastAt_.contains({row.parent, above})) return true;
  }
  return false;
}

// No way leads to it, or to one that it is mounted on. The steps are counted for lists that no
// kernel writes.
bool MountTable::isOutOfReach(const Row& start) const {
  const Row* row = &start;
  for (std::size_t step = 0; step < rows_.size(); ++step) {
    if (isPassedBy(*row)) return true;
    const auto parent = byId_.find(row->parent);
    if (parent == byId_.end() || row->parent == row->id) return false;
    row = &rows_[parent->second];
  }
  return false;
}

std::vector<Mount> mountsOf(const FileTree& files) {
  MountTable table;
  files.readLines("/proc/self/mountinfo", [&](std::string_view line) { table.take(line); });
  std::vector<Mount> mounts = table.visible();
  std::erase_if(mounts, [&](const Mount& mount) { return isPlainFile(files, mount); });
  return mounts;
}

// A file system that may span several devices, such as btrfs, has numbers of no device. It
// then goes by its source, which may be a link (/dev/mapper/...).
std::string blockDeviceOf(const FileTree& files, const Mount& mount) {
  if (std::string name = nameOf(files, mount.numbers); !name.empty()) {
    return name;
  }
  if (!mount.source.starts_with(kDevices)) {
    return "";
  }
  const std::string target = files.linkTarget(mount.source);
  std::string name = target.empty() ? mount.source.substr(kDevices.size()) : lastPartOf(target);
  // A slash in a name is an exclamation mark in /sys (drivers/base/core.c).
  std::replace(name.begin(), name.end(), '/', '!');
  return files.line("/sys/class/block/" + name + "/dev").empty() ? "" : name;
}

std::string bootDevice(const FileTree& files) {
  const std::vector<Mount> mounts = mountsOf(files);
  for (const std::string_view place : {"/boot", "/"}) {
    const auto found = std::find_if(mounts.begin(), mounts.end(),
                                    [&](const Mount& mount) { return mount.folder == place; });
    const std::string device = found == mounts.end() ? "" : deviceOf(files, *found);
    if (!device.empty()) {
      return printable(device);
    }
  }
  return "";
}

}  // namespace veltrin
