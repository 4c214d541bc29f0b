// SPDX-License-Identifier: GPL-3.0-or-later
// The logical drives of a Linux machine, each under a letter.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "machine/file_tree.h"
#include "machine/machine.h"
#include "machine/mounts.h"

namespace veltrin {

enum class VolumeKind {
  Disk,     // on disks, or on what is put together from disks
  Optical,  // the drive, with or without a disc
  Floppy,   // the same
  Network,
  Unknown  // the root of a container or of a system that runs in memory
};

// A file system that is mounted, or a drive for discs.
struct Volume {
  char letter = 0;
  VolumeKind kind = VolumeKind::Unknown;
  std::string device;  // the kernel's name of the block device; empty when it lies on none
  Mount mount;         // where it is mounted; without a folder when it is not
};

// In the order of their letters, which are given so:
//   A and B  floppy drives
//   C        the root
//   from D   other file systems on built-in disks, by their folders;
//            then optical drives; file systems of the network, by their folders;
//            at last those on disks that come and go, by their folders
// up to Z. By folders, as the order in which a system mounts them changes from start to start;
// and what comes and goes stands last, so that it moves no other drive.
//
// A device (of ZFS, a pool) has one letter however often it is mounted: by its whole file
// system rather than by a part of it, and by the first folder. Images of packages (loop
// devices), what lies in memory and the kernel's own file systems have none.
std::vector<Volume> volumesOf(const FileTree& files);

// The drive of a text "C:" or "C:\", in any case; nothing when there is no such drive.
std::optional<Volume> volumeAt(const FileTree& files, const std::string& root);

// Whether a text has the form of a drive, "C:" or "C:\".
bool isDriveText(const std::string& root);

// The name that its owner gave it; empty for none, and when this user is not told.
std::string labelOf(const FileTree& files, const Volume& volume);

// Whether another machine or a program serves a file system. Either may be gone, and then nothing
// that asks for the file system comes back.
bool isServed(const Mount& mount);

// The room of a file system that is mounted, as Windows counts it: the whole of its device,
// of which what the file system needs for itself is in use. (Linux leaves that out of the
// total: of ext4 up to 2 percent, by which a volume would be too small to be found on its
// disk.) That of an encrypted volume is its partition. On several devices a file system may be
// larger than the one that it is named by, and then counts as it is. Nothing when the system does
// not tell.
std::optional<FileSystemRoom> roomOf(const FileTree& files, const Machine& machine,
                                     const Volume& volume);

}  // namespace veltrin
