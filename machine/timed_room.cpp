// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/timed_room.h"

namespace veltrin {

// Another file system may take the folder of one that does not answer: its numbers tell them
// apart.
std::optional<FileSystemRoom> TimedRoom::of(const Volume& volume) const {
  if (!isServed(volume.mount)) return roomOf(files_, *machine_, volume);
  const auto answer = std::make_shared<std::optional<FileSystemRoom>>();
  const auto question = [files = files_, machine = machine_, volume, answer] {
    *answer = roomOf(files, *machine, volume);
  };
  const bool isTold = questions_.ask(volume.mount.numbers + " " + volume.mount.folder, question);
  return isTold ? *answer : std::nullopt;
}

}  // namespace veltrin
