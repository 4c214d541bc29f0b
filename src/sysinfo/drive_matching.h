// SPDX-License-Identifier: GPL-3.0-or-later
// Which logical drives lie on which disk. Nobody tells: it is seen from their sizes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/wmi.h"
#include "sysinfo/drive_table.h"
#include "sysinfo/guard.h"

namespace veltrin {

// What was found for one disk.
struct DriveMatch {
  std::vector<int> slots;  // of the drives whose sizes make up the disk; empty: none do

  // The only candidate, when no size made it a match; else 0. Of it only a picture is kept,
  // in the slot that was tried last, on this or an earlier disk: 0 when none ever was.
  int alone = 0;
  int triedLast = 0;

  friend bool operator==(const DriveMatch&, const DriveMatch&) = default;
};

// The search of one walk through the disks. It changes nothing: what follows from a match is
// the caller's business.
class DriveMatching {
 public:
  // Disks of up to `mostPartitions` partitions are searched for as many drives.
  DriveMatching(const DriveTable& table, int mostPartitions, const Guard& guard)
      : table_(table), mostPartitions_(mostPartitions), guard_(guard) {}

  // The drives of a disk (an object of Win32_DiskDrive) among candidates, the numbers of
  // their slots in order:
  // 1. as many as it has partitions, whose sizes add up to the disk's. Of one or two drives
  //    also when each is a cylinder less than it was taken for;
  // 2. else, whatever the partitions, the only candidate there is, or the first whose size
  //    lies within five cylinders.
  // A property that cannot be read fails the statement it stands in.
  DriveMatch match(const WmiObject& disk, const std::vector<int>& candidates);

 private:
  using Slots = std::vector<int>;
  using Size = Loose DriveSlot::*;

  // A disk and the candidates for it.
  struct Search {
    const WmiObject& disk;
    const Slots& candidates;
    std::optional<double> bytes;  // of the disk; none when it does not tell them
  };

  Slots bySize(const Search& search);
  Slots single(const Search& search, Size size);
  Slots several(const Search& search, std::size_t count, Size size);
  bool complete(const Search& search, std::size_t count, Size size, Slots& chosen);
  Slots near(const Search& search);
  bool hasPartitions(const Search& search, int count) const;
  bool addsUp(const Search& search, const Slots& chosen, Size size) const;

  const DriveTable& table_;
  int mostPartitions_;
  Guard guard_;
  int triedLast_ = 0;
};

}  // namespace veltrin
