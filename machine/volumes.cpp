// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/volumes.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "machine/disks.h"
#include "machine/fact_text.h"
#include "machine/udev_record.h"

namespace veltrin {
namespace {

constexpr char kFirstFloppy = 'A';
constexpr char kRootLetter = 'C';
constexpr char kLastLetter = 'Z';

// File systems that other machines serve.
constexpr std::array<std::string_view, 12> kNetworkTypes{
    "afs", "ceph", "cifs", "coda",   "fuse.glusterfs", "fuse.sshfs",
    "ncp", "nfs",  "nfs4", "lustre", "smb3",           "smbfs"};

bool isOfNetwork(const Mount& mount) {
  return std::find(kNetworkTypes.begin(), kNetworkTypes.end(), mount.type) != kNetworkTypes.end();
}

bool isRoot(const Volume& volume) { return volume.mount.folder == "/"; }

VolumeKind kindOf(const Mount& mount, const std::string& device) {
  const auto isNamed = [&](std::string_view start) { return device.starts_with(start); };
  if (device.empty()) {
    if (isOfNetwork(mount)) return VolumeKind::Network;
    return mount.type == "zfs" ? VolumeKind::Disk : VolumeKind::Unknown;
  }
  if (isNamed("sr")) return VolumeKind::Optical;
  if (isNamed("fd")) return VolumeKind::Floppy;
  return isNamed("loop") || isNamed("ram") || isNamed("zram") ? VolumeKind::Unknown
                                                              : VolumeKind::Disk;
}

// What two mounts of one file system have in common: its device, pool or source.
std::string keyOf(const Volume& volume) {
  const std::string& source = volume.mount.source;
  if (!volume.device.empty()) return volume.device;
  return volume.mount.type == "zfs" ? "zfs " + source.substr(0, source.find('/')) : source;
}

// The root before all others, a whole file system before its parts, then by the folders.
bool isMountedBefore(const Volume& left, const Volume& right) {
  const auto rank = [](const Volume& volume) {
    return std::make_tuple(!isRoot(volume), volume.mount.part != "/",
                           std::string_view(volume.mount.folder));
  };
  return rank(left) < rank(right);
}

// One for each file system; the root in any case, and first.
std::vector<Volume> mountedVolumes(const FileTree& files) {
  std::vector<Volume> all;
  for (Mount& mount : mountsOf(files)) {
    std::string device = blockDeviceOf(files, mount);
    const VolumeKind kind = kindOf(mount, device);
    all.push_back({0, kind, std::move(device), std::move(mount)});
  }
  std::sort(all.begin(), all.end(), isMountedBefore);
  if (all.empty() || !isRoot(all.front())) {
    all.insert(all.begin(), Volume{0, VolumeKind::Unknown, "", Mount{"", "/", "/", "", "", ""}});
  }
  std::set<std::string> keys;
  std::erase_if(all, [&](const Volume& volume) {
    const bool isDrive = isRoot(volume) || volume.kind != VolumeKind::Unknown;
    return !isDrive || !keys.insert(keyOf(volume)).second;
  });
  return all;
}

// The drives for discs: with what is mounted, or empty.
std::vector<Volume> discDrives(const FileTree& files, const std::string& start, VolumeKind kind,
                               const std::vector<Volume>& mounted) {
  std::vector<Volume> drives;
  for (const std::string& name : files.names("/sys/block")) {
    if (!name.starts_with(start)) continue;
    const auto found = std::find_if(mounted.begin(), mounted.end(),
                                    [&](const Volume& volume) { return volume.device == name; });
    if (found == mounted.end()) {
      drives.push_back({0, kind, name, {}});
    } else if (!isRoot(*found)) {
      drives.push_back(*found);
    }
  }
  return drives;
}

// Takes the volumes of a kind out of a list, by their folders.
std::vector<Volume> takeOf(VolumeKind kind, std::vector<Volume>& volumes) {
  const auto others = std::stable_partition(
      volumes.begin(), volumes.end(), [&](const Volume& volume) { return volume.kind != kind; });
  std::vector<Volume> taken(others, volumes.end());
  volumes.erase(others, volumes.end());
  std::sort(taken.begin(), taken.end(), [](const Volume& left, const Volume& right) {
    return left.mount.folder < right.mount.folder;
  });
  return taken;
}

// Gives letters from one on, as far as there are any.
void giveLetters(char first, char last, std::vector<Volume> volumes, std::vector<Volume>& named) {
  for (Volume& volume : volumes) {
    if (first > last) return;
    volume.letter = first++;
    named.push_back(std::move(volume));
  }
}

// The name of the link in a folder of /dev/disk that points to a device.
std::string linkNameOf(const FileTree& files, const std::string& folder,
                       const std::string& device) {
  const std::string end = "/" + device;
  std::string link;
  for (const std::string& name : files.names(folder)) {
    link = folder;
    link.append("/").append(name);
    if (files.linkTarget(link).ends_with(end)) {
      return undoHexEscapes(name);
    }
  }
  return "";
}

// The size of a volume's device, or of the one that it encrypts as a whole: what the
// encryption needs for itself is in use, too.
std::uint64_t bytesOfVolume(const FileTree& files, std::string device) {
  constexpr int kMostLayers = 8;
  for (int layer = 0; layer < kMostLayers; ++layer) {
    const std::string folder = "/sys/class/block/" + device;
    const auto below = files.names(folder + "/slaves");
    if (below.size() != 1 || !files.line(folder + "/dm/uuid").starts_with("CRYPT-")) break;
    device = below.front();
  }
  return bytesOfDevice(files, device).value_or(0);
}

}  // namespace

std::vector<Volume> volumesOf(const FileTree& files) {
  std::vector<Volume> mounted = mountedVolumes(files);
  std::vector<Volume> floppies = discDrives(files, "fd", VolumeKind::Floppy, mounted);
  const std::vector<Volume> optical = discDrives(files, "sr", VolumeKind::Optical, mounted);
  std::vector<Volume> rest{std::move(mounted.front())};
  mounted.erase(mounted.begin());
  const std::vector<Volume> network = takeOf(VolumeKind::Network, mounted);
  std::vector<Volume> disks = takeOf(VolumeKind::Disk, mounted);
  const auto external =
      std::stable_partition(disks.begin(), disks.end(), [&](const Volume& volume) {
        return volume.device.empty() || !isExternal(files, volume.device);
      });
  rest.insert(rest.end(), disks.begin(), external);
  rest.insert(rest.end(), optical.begin(), optical.end());
  rest.insert(rest.end(), network.begin(), network.end());
  rest.insert(rest.end(), external, disks.end());

  std::vector<Volume> named;
  giveLetters(kFirstFloppy, kRootLetter - 1, std::move(floppies), named);
  giveLetters(kRootLetter, kLastLetter, std::move(rest), named);
  return named;
}

bool isDriveText(const std::string& root) {
  return (root.size() == 2 || (root.size() == 3 && root[2] == '\\')) && root[1] == ':';
}

std::optional<Volume> volumeAt(const FileTree& files, const std::string& root) {
  if (!isDriveText(root)) {
    return std::nullopt;
  }
  const char letter = upperCase(root)[0];
  for (Volume& volume : volumesOf(files)) {
    if (volume.letter == letter) {
      return std::move(volume);
    }
  }
  return std::nullopt;
}

std::string labelOf(const FileTree& files, const Volume& volume) {
  if (volume.device.empty()) {
    return "";
  }
  const UdevRecord record(files, "b" + numbersOfDevice(files, volume.device));
  const std::string label = printable(record.decoded("ID_FS_LABEL_ENC"));
  return label.empty() ? printable(linkNameOf(files, "/dev/disk/by-label", volume.device)) : label;
}

bool isServed(const Mount& mount) {
  return isOfNetwork(mount) || mount.type.starts_with("fuse") || mount.type == "autofs" ||
         mount.type == "9p";
}

std::optional<FileSystemRoom> roomOf(const FileTree& files, const Machine& machine,
                                     const Volume& volume) {
  if (volume.mount.folder.empty()) {
    return std::nullopt;
  }
  std::optional<FileSystemRoom> room = machine.room(volume.mount.folder);
  if (room && room->block > 0 && !volume.device.empty()) {
    room->total = std::max(room->total, bytesOfVolume(files, volume.device) / room->block);
  }
  return room;
}

}  // namespace veltrin
