// SPDX-License-Identifier: GPL-3.0-or-later
// The two walks on which all drive reports go: through the logical drives and the disks.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "forms/list_box.h"
#include "platform/platform.h"
#include "sysinfo/drive_table.h"
#include "sysinfo/guard.h"

namespace veltrin {

// By what the picture of a disk is chosen: USB and the network by all of these.
enum class PictureRule {
  Plain,   // "USB" in any case
  Labels,  // RAM by the label of its drive
  Types    // the same, and by the disk's interface
};

// The working lists of a walk.
struct DriveLists {
  ListBox& candidates;  // numbers of the slots that are not yet found on a disk
  ListBox& letters;     // of the drives that are
  ListBox& disks;       // numbers of the disks that drives were found on
};

// What a routine does of its own for each logical drive, with the number of its slot.
using DriveStep = std::function<void(const WmiObject& drive, int number)>;

// What it does for each disk.
struct DiskSteps {
  PictureRule rule = PictureRule::Plain;
  int mostPartitions = 3;

  // Where drives were found on it, with their slots and the disk's picture.
  std::function<void(const WmiObject& disk, const std::vector<int>& slots, std::int16_t picture)>
      matched;
  std::function<void(const WmiObject& disk)> told;  // in any case, behind that
};

class DriveWalk {
 public:
  // On the machine of that name.
  DriveWalk(Platform& platform, std::string computer, DriveTable& table, DriveLists lists,
            const Guard& guard)
      : platform_(platform),
        computer_(std::move(computer)),
        table_(table),
        lists_(lists),
        guard_(guard) {}

  void clearLists();

  // Enters each logical drive into its slot. `before` and `after` may be empty.
  void logicalDrives(const DriveStep& before, const DriveStep& after);

  // Finds the drives of each disk and takes them off the candidates.
  void disks(const DiskSteps& steps);

 private:
  using Visit = std::function<void(const WmiObject&)>;
  void forEach(const std::string& kind, const Visit& visit);
  void enter(const WmiObject& drive, int number);
  void enterSizes(const WmiObject& drive, int number);
  std::vector<int> candidates() const;
  void record(const WmiObject& disk, const std::vector<int>& slots, const DiskSteps& steps);
  std::int16_t pictureOf(const WmiObject& disk, int number, PictureRule rule) const;
  void removePlaced();
  bool removeOnePlaced();

  Platform& platform_;
  std::string computer_;
  DriveTable& table_;
  DriveLists lists_;
  Guard guard_;
};

}  // namespace veltrin
