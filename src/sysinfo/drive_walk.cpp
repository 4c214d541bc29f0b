// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/drive_walk.h"

#include <memory>
#include <optional>

#include "sysinfo/drive_matching.h"
#include "sysinfo/result_set.h"
#include "text/strings.h"

namespace veltrin {

void DriveWalk::clearLists() {
  lists_.candidates.clear();
  lists_.letters.clear();
  lists_.disks.clear();
}

// An object is visited before the next one is asked for.
void DriveWalk::forEach(const std::string& kind, const Visit& visit) {
  std::unique_ptr<WmiObjects> answer;
  guard_.run([&] {
    answer = platform_.wmi.connect(monikerOf(computer_))
                 ->ExecQuery("Select * from " + kind, kQueryFlags);
  });
  if (!answer) return;
  for (;;) {
    std::optional<WmiObject> object;
    guard_.run([&] { object = answer->next(); });
    if (!object) return;
    visit(*object);
  }
}

void DriveWalk::logicalDrives(const DriveStep& before, const DriveStep& after) {
  int number = 0;
  forEach("Win32_LogicalDisk", [&](const WmiObject& drive) {
    ++number;
    if (before) before(drive, number);
    enter(drive, number);
    if (after) after(drive, number);
  });
}

void DriveWalk::enter(const WmiObject& drive, int number) {
  guard_.run([&] { table_.slot(number).DriveCaption = drive.value("Caption").text(); });
  guard_.run([&] { table_.slot(number).DriveMedia = drive.value("MediaType"); });
  if (guard_.test([&] { return drive.value("MediaType").equals(kFixedMedium); })) {
    lists_.candidates.add(std::to_string(number));
  }
  guard_.run([&] { enterSizes(drive, number); });
  guard_.run([&] { table_.slot(number).DriveLabel = drive.value("VolumeName").text(); });
}

// A drive without a medium tells no clusters.
void DriveWalk::enterSizes(const WmiObject& drive, int number) {
  std::uint32_t sectorsPerCluster = 0;
  std::uint32_t bytesPerSector = 0;
  std::uint32_t freeClusters = 0;
  std::uint32_t totalClusters = 0;
  platform_.drives.GetDiskFreeSpaceA(drive.value("Caption").text() + "\\", sectorsPerCluster,
                                     bytesPerSector, freeClusters, totalClusters);
  table_.slot(number).takeSizes(sectorsPerCluster, totalClusters);
}

void DriveWalk::disks(const DiskSteps& steps) {
  DriveMatching matching(table_, steps.mostPartitions, guard_);
  forEach("Win32_DiskDrive", [&](const WmiObject& disk) {
    const DriveMatch found = matching.match(disk, candidates());
    if (!found.slots.empty()) record(disk, found.slots, steps);
    if (found.alone != 0) {
      const std::int16_t picture = pictureOf(disk, found.alone, steps.rule);
      guard_.run([&] { table_.slot(found.triedLast).DriveIcon = picture; });
    }
    if (steps.told) steps.told(disk);
    removePlaced();
  });
}

std::vector<int> DriveWalk::candidates() const {
  std::vector<int> numbers;
  for (std::size_t index = 0; index < lists_.candidates.count(); ++index) {
    numbers.push_back(static_cast<int>(Val(lists_.candidates.item(index))));
  }
  return numbers;
}

// Only the first drive takes the picture.
void DriveWalk::record(const WmiObject& disk, const std::vector<int>& slots,
                       const DiskSteps& steps) {
  guard_.run([&] { lists_.disks.add(disk.value("Index").text()); });
  for (const int number : slots) {
    guard_.run([&] { lists_.letters.add(letterOf(table_.slot(number).DriveCaption)); });
  }
  const std::int16_t picture = pictureOf(disk, slots.front(), steps.rule);
  guard_.run([&] { table_.slot(slots.front()).DriveIcon = picture; });
  if (steps.matched) steps.matched(disk, slots, picture);
}

std::int16_t DriveWalk::pictureOf(const WmiObject& disk, int number, PictureRule rule) const {
  const Compare compare = rule == PictureRule::Plain ? Compare::IgnoreCase : Compare::Exact;
  const auto isOf = [&](const char* word) {
    return guard_.test(
        [&] { return InStr(1, disk.value("InterfaceType").text(), word, compare) > 0; });
  };
  const auto isNamed = [&](const char* word) {
    return guard_.test([&] { return InStr(1, table_.slot(number).DriveLabel, word) > 0; });
  };
  if (isOf("USB")) return kUsbPicture;
  if (rule == PictureRule::Types && isOf("RAM")) return kRamPicture;
  if (rule != PictureRule::Plain && (isNamed("RAMDisk") || isNamed("RAM "))) return kRamPicture;
  if (guard_.test([&] { return table_.slot(number).isOfNoMedium(); })) return kNetworkPicture;
  return kFixedPicture;
}

void DriveWalk::removePlaced() {
  while (removeOnePlaced()) {
  }
}

bool DriveWalk::removeOnePlaced() {
  const std::vector<int> numbers = candidates();
  for (std::size_t index = 0; index < numbers.size(); ++index) {
    std::string letter;
    guard_.run([&] { letter = letterOf(table_.slot(numbers[index]).DriveCaption); });
    if (letter.empty() || !lists_.letters.find(letter)) continue;
    lists_.candidates.remove(index);
    return true;
  }
  return false;
}

}  // namespace veltrin
