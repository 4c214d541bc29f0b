// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/drive_report.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "sysinfo/drive_sizes.h"
#include "sysinfo/frmSysInfo.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::int16_t kDriveColour = 2;
constexpr std::int16_t kPlainColour = 1;
constexpr int kDisks = 26;

// Numbers that a slot's icon may hold, and the pictures of a disk whose first drive holds
// them. The others, RAM and the network among them, give a disk no line.
struct DiskPicture {
  std::string_view icon;
  std::int16_t picture;
};
constexpr std::array<DiskPicture, 6> kDiskPictures{{
    {"34", kUsbPicture},
    {"0", kNetworkPicture},
    {"5", kFloppyPicture},
    {"11", kOpticalPicture},
    {"12", kFixedPicture},
    {"15", kFixedPicture},
}};

std::int16_t pictureOfMedium(const WmiValue& medium) {
  if (medium.equals(kNoMedium)) return kNetworkPicture;
  if (medium.equals(kFloppyMedium)) return kFloppyPicture;
  if (medium.equals(kOpticalMedium)) return kOpticalPicture;
  return kFixedPicture;
}

// The slot of the first drive that was entered under a letter; 0 when none was.
int slotOf(const std::string& letter, const ListBox& slots) {
  for (std::size_t index = 0; index < slots.count(); ++index) {
    const std::string item = slots.item(index);
    if (equalIgnoringCase(Left(item, 1), letter)) return static_cast<int>(Val(Mid(item, 2)));
  }
  return 0;
}

bool contains(const std::string& text, const char* part) {
  return InStr(1, text, part, Compare::IgnoreCase) > 0;
}

}  // namespace

void DriveReport::line(const std::string& text, std::int16_t picture) const {
  if (window_) window_->LogEvents(text, picture, kDriveColour, true);
}

void DriveReport::gap() const {
  if (window_) window_->LogEvents("    ", kNoDrivePicture, kPlainColour, false);
}

void DriveReport::physicalDrives(const ListBox& slots) const {
  line("     ");
  line("Physical Hard Drive Information");
  for (int disk = 0; disk < kDisks; ++disk) {
    const std::string letters = table_.PhysicalLetters(disk);
    if (!letters.empty()) physicalDrive(disk, letters, slots);
  }
}

void DriveReport::physicalDrive(int disk, const std::string& letters, const ListBox& slots) const {
  const std::string icon = table_.slot(slotOf(Left(letters, 1), slots)).DriveIcon.text();
  const auto known = std::find_if(kDiskPictures.begin(), kDiskPictures.end(),
                                  [&](const DiskPicture& entry) { return entry.icon == icon; });
  const std::int64_t count = Len(letters);
  if (known != kDiskPictures.end()) {
    line("PHYSICAL DRIVE " + std::to_string(disk) + "   " + std::to_string(count) + " Partition",
         known->picture);
  }
  for (std::int64_t place = 1; place <= count; ++place) {
    const std::string letter = Mid(letters, place, 1);
    const DriveSlot& slot = table_.slot(slotOf(letter, slots));
    line("     " + letter + ": (" + slot.DriveLabel + ")  " + sizeText(slot.DriveSize.number()));
  }
}

void DriveReport::logicalDrive(const WmiObject& drive, int number,
                               const std::string& between) const {
  if (guard_.test([&] { return drive.value("VolumeName").text().empty(); })) {
    guard_.run([&] { emptyDrive(drive); });
  } else {
    guard_.run([&] { namedDrive(drive, number, between); });
  }
}

void DriveReport::emptyDrive(const WmiObject& drive) const {
  const WmiValue& medium = drive.value("MediaType");
  const std::string caption = drive.value("Caption").text();
  line(medium.equals(kFixedMedium) ? caption : caption + "   (Empty)", pictureOfMedium(medium));
}

void DriveReport::namedDrive(const WmiObject& drive, int number, const std::string& between) const {
  const std::string name = drive.value("VolumeName").text();
  const DriveSlot& slot = table_.slot(number);
  std::int16_t picture = pictureOfMedium(drive.value("MediaType"));
  if (slot.DriveIcon == Loose(kUsbPicture)) picture = kUsbPicture;
  if (contains(name, "RAMDISK") || contains(name, "RAM Drive")) picture = kRamPicture;
  line(drive.value("Caption").text() + "   (" + name + ")" + between +
           longSizeText(slot.DriveSize.number()),
       picture);
}

void DriveReport::match(const WmiObject& disk, const std::vector<int>& slots,
                        std::int16_t picture) const {
  guard_.run([&] { line(disk.value("DeviceID").text(), picture); });
  for (const int number : slots) {
    guard_.run([&] {
      const DriveSlot& slot = table_.slot(number);
      line("Logical Drive: " + letterOf(slot.DriveCaption) + "   (" + slot.DriveLabel + ")");
    });
  }
}

void DriveReport::details(const WmiObject& disk) const {
  fact("    Model: ", disk, "Model");
  fact("    InterfaceType: ", disk, "InterfaceType");
  figure("    Size: ", disk, "Size");
  fact("    Partitions: ", disk, "Partitions");
  figure("    BytesPerSector: ", disk, "BytesPerSector");
  figure("    SectorsPerTrack: ", disk, "SectorsPerTrack");
  figure("    TotalCylinders: ", disk, "TotalCylinders");
  figure("    TotalTracks: ", disk, "TotalTracks");
  figure("    TracksPerCylinder: ", disk, "TracksPerCylinder");
}

void DriveReport::heads(const WmiObject& disk) const {
  fact("    Total Heads: ", disk, "TotalHeads");
}

void DriveReport::fact(const char* label, const WmiObject& disk, const char* property) const {
  guard_.run([&] { line(label + disk.value(property).text()); });
}

// A figure that is not known is left out.
void DriveReport::figure(const char* label, const WmiObject& disk, const char* property) const {
  guard_.run([&] {
    const WmiValue& value = disk.value(property);
    line(label + (value.isNull() ? std::string() : FormatNumber(value.number())));
  });
}

}  // namespace veltrin
