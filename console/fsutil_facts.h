// SPDX-License-Identifier: GPL-3.0-or-later
// What fsutil tells of a volume.
#pragma once

#include <string>
#include <vector>

#include "machine/file_tree.h"
#include "machine/timed_room.h"
#include "machine/volumes.h"

namespace veltrin {

// Lines without their ends; or the sentence why there are none.
struct VolumeAnswer {
  std::vector<std::string> lines;
  std::string problem;
};

// A volume that is mounted, and how it is called in the answers: "C:".
struct AskedVolume {
  const FileTree& files;
  const TimedRoom& rooms;
  const Volume& volume;
  const std::string& name;
};

// "volume diskfree": its free and all bytes, and those that this user may take.
VolumeAnswer freeRoom(const AskedVolume& asked);

// "fsinfo volumeinfo": what it is. A fact that is not known has no line.
VolumeAnswer volumeInfo(const AskedVolume& asked);

// "fsinfo statistics": what was read and written since the start, and its files.
VolumeAnswer volumeStatistics(const AskedVolume& asked);

// "fsinfo ntfsinfo": refused for any other file system.
VolumeAnswer ntfsInfo(const AskedVolume& asked);

// "dirty query": whether the file system has come upon errors that were not repaired yet.
// Only those of ext2 to ext4 and the kernel's NTFS tell.
VolumeAnswer dirtiness(const AskedVolume& asked);

// "repair query": the errors that it knows of, and what it does about them.
VolumeAnswer repairState(const AskedVolume& asked);

}  // namespace veltrin
