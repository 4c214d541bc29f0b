// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/drive_table.h"

#include "text/strings.h"

namespace veltrin {
namespace {

// A cylinder of the usual translation: 255 heads of 63 sectors, 512 bytes each.
constexpr double kSectorsOfCylinder = 255 * 63;
constexpr double kCylinder = 512 * kSectorsOfCylinder;
constexpr double kFewCylinders = 5;

}  // namespace

bool DriveSlot::isOfNoMedium() const { return !DriveMedia.isNull() && DriveMedia.number() == 0; }

void DriveSlot::takeSizes(std::uint32_t sectorsPerCluster, std::uint32_t totalClusters) {
  if (totalClusters == 0) return;
  const double cylinders = Val(Format(totalClusters / kSectorsOfCylinder * sectorsPerCluster, "#"));
  DriveSize = cylinders * kCylinder;
  DriveSizeLess1 = (cylinders - 1) * kCylinder;
  DriveSizePlus5 = (cylinders + kFewCylinders) * kCylinder;
  DriveSizeLess5 = (cylinders - kFewCylinders) * kCylinder;
}

std::size_t DriveTable::place(int number) {
  if (number < 0 || number > kSlots) {
    throw StatementFailed("No such drive in the table", kSubscriptOutOfRange);
  }
  return static_cast<std::size_t>(number);
}

std::string& DriveTable::PhysicalLetters(int disk) {
  if (disk < 0 || disk >= static_cast<int>(letters_.size())) {
    throw StatementFailed("No such disk in the table", kSubscriptOutOfRange);
  }
  return letters_.at(static_cast<std::size_t>(disk));
}

// The last that fits counts.
void DriveTable::judgeType(const WmiObject& drive, int number, const Guard& guard) {
  const auto isMedium = [&](const char* kind) {
    return guard.test([&] { return slot(number).DriveMedia.equals(kind); });
  };
  const auto isNamed = [&](const char* part) {
    return guard.test(
        [&] { return InStr(1, drive.value("VolumeName").text(), part, Compare::IgnoreCase) > 0; });
  };
  if (isMedium(kNoMedium)) typeWord = "NET";
  if (isMedium(kFloppyMedium)) typeWord = "FLP";
  if (isMedium(kOpticalMedium)) typeWord = "DVD";
  if (isMedium(kFixedMedium)) typeWord = "HDR";
  if (isNamed("RAMDISK") || isNamed("RAM ")) typeWord = "RAM";
  if (guard.test([&] { return slot(number).DriveIcon == Loose(kUsbPicture); })) typeWord = "USB";
}

std::string letterOf(const std::string& caption) { return Left(caption, 1); }

}  // namespace veltrin
