// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of the machine's logical drives and of the disks that they lie on.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/wmi.h"
#include "sysinfo/guard.h"
#include "text/loose.h"

namespace veltrin {

// One logical drive. Its sizes are estimates in bytes, of whole cylinders; empty until a
// drive with a medium was in the slot.
struct DriveSlot {
  std::string DriveCaption;       // "C:"
  std::string DriveLabel;         // the volume's name
  WmiValue DriveMedia = Loose();  // the kind of its medium, by the service's number
  Loose DriveSize;
  Loose DriveSizeLess1;  // of one cylinder less
  Loose DriveSizeLess5;
  Loose DriveSizePlus5;
  Loose DriveIcon;  // picture of the disk it was found on; or empty

  // Whether the medium is number 0, a drive of the network's.
  bool isOfNoMedium() const;

  // Takes the sizes from the drive's clusters. Without any they stay.
  void takeSizes(std::uint32_t sectorsPerCluster, std::uint32_t totalClusters);
};

// Kinds of drives' media, by the numbers of the service.
inline constexpr const char* kNoMedium = "0";
inline constexpr const char* kFloppyMedium = "5";
inline constexpr const char* kOpticalMedium = "11";
inline constexpr const char* kFixedMedium = "12";

// Numbers of the report's pictures.
inline constexpr std::int16_t kNoDrivePicture = 0;
inline constexpr std::int16_t kRamPicture = 7;
inline constexpr std::int16_t kOpticalPicture = 8;
inline constexpr std::int16_t kNetworkPicture = 14;
inline constexpr std::int16_t kFixedPicture = 15;
inline constexpr std::int16_t kFloppyPicture = 16;
inline constexpr std::int16_t kUsbPicture = 34;

// Slots of the logical drives in the order in which the service lists them, and the letters
// on each disk. Nothing is ever cleared.
class DriveTable {
 public:
  static constexpr int kSlots = 26;

  // A drive's slot, from 1. Number 0 is one that no drive has. Throw StatementFailed
  // (kSubscriptOutOfRange) past the table.
  DriveSlot& slot(int number) { return slots_.at(place(number)); }
  const DriveSlot& slot(int number) const { return slots_.at(place(number)); }

  // The letters of the drives on a disk, joined, by the service's number of the disk from 0
  // to 25. Throws StatementFailed (kSubscriptOutOfRange) past these.
  std::string& PhysicalLetters(int disk);

  // The word for the kind of the last drive that had one: "NET", "FLP", "DVD", "HDR", "RAM"
  // or "USB".
  std::string typeWord;

  // Finds the word for a drive (an object of Win32_LogicalDisk) that is in this slot. Where
  // there is none the word of the drive before stays.
  void judgeType(const WmiObject& drive, int number, const Guard& guard);

 private:
  static std::size_t place(int number);

  std::array<DriveSlot, kSlots + 1> slots_;
  std::array<std::string, 26> letters_;
};

// The first letter of a drive's name.
std::string letterOf(const std::string& caption);

}  // namespace veltrin
