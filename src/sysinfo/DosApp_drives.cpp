// SPDX-License-Identifier: GPL-3.0-or-later
// The reports about all drives.
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "sysinfo/DosApp.h"
#include "sysinfo/report_values.h"
#include "text/strings.h"

namespace veltrin {
namespace {

const char* const kSection = "System";

constexpr std::int16_t kPlainDiskPicture = 12;  // one that no disk gets

constexpr int kInvalidUseOfNull = 94;

// The service's number of a disk. One without is not disk 0: the statement fails, as it does
// where the property cannot be read.
const WmiValue& indexOf(const WmiObject& disk) {
  const WmiValue& index = disk.value("Index");
  if (index.isNull()) throw StatementFailed("Invalid use of Null", kInvalidUseOfNull);
  return index;
}

}  // namespace

void DosApp::TEST(const Loose& Mode) {
  const Guard guard = Guard::skipping();
  DriveWalk walk = driveWalk(guard);
  walk.clearLists();
  walk.logicalDrives({}, {});
  walk.disks({.rule = PictureRule::Plain, .mostPartitions = 3, .matched = {}, .told = {}});
  if (Val(Mode) != 1) Test2();
}

void DosApp::Test2() {
  const Guard guard = Guard::skipping();
  DriveWalk walk = driveWalk(guard);
  walk.clearLists();
  walk.logicalDrives([&](const WmiObject& drive, int number) { enterLetter(guard, drive, number); },
                     [&](const WmiObject& drive, int number) { storeDrive(guard, drive, number); });
  walk.disks({.rule = PictureRule::Labels,
              .mostPartitions = 4,
              .matched = [&](const WmiObject& disk, const std::vector<int>& slots,
                             std::int16_t picture) { storeDisk(guard, disk, slots, picture); },
              .told = {}});
  guard.run([&] { Test3(); });
}

void DosApp::Test3() {
  const Guard guard = Guard::leaving();
  const DriveReport report = driveReport(guard);
  DriveWalk walk = driveWalk(guard);
  walk.clearLists();
  report.physicalDrives(List8);
  report.gap();
  report.line("                  Logical Drive Information");
  report.line(" ");
  walk.logicalDrives({}, [&](const WmiObject& drive, int number) {
    storeDrive(guard, drive, number);
    report.logicalDrive(drive, number, "   ");
  });
  report.line(" ");
  report.line("                  Detailed Physical Drive Information");
  walk.disks({.rule = PictureRule::Labels,
              .mostPartitions = 3,
              .matched =
                  [&](const WmiObject& disk, const std::vector<int>& slots, std::int16_t picture) {
                    storeDisk(guard, disk, slots, picture);
                    report.match(disk, slots, picture);
                  },
              .told = [&](const WmiObject& disk) { report.details(disk); }});
}

void DosApp::GetDrive() {
  const Guard guard = Guard::skipping();
  const DriveReport report = driveReport(guard);
  DriveWalk walk = driveWalk(guard);
  walk.clearLists();
  report.gap();
  report.line("                  Basic Drive Information");
  report.line(" ");
  walk.logicalDrives({}, [&](const WmiObject& drive, int number) {
    report.logicalDrive(drive, number, "      ");
  });
  report.line(" ");
  report.line("                  Detailed Drive Information");
  walk.disks({.rule = PictureRule::Types,
              .mostPartitions = 3,
              .matched = [&](const WmiObject& disk, const std::vector<int>& slots,
                             std::int16_t picture) { report.match(disk, slots, picture); },
              .told =
                  [&](const WmiObject& disk) {
                    report.details(disk);
                    report.heads(disk);
                  }});
}

DriveWalk DosApp::driveWalk(const Guard& guard) {
  return {program_.platform,
          program_.shared<ReportValues>().ComputerName,
          Drives,
          {List2, List4, List5},
          guard};
}

// Part of a report goes to that one's window, what is called by itself to the window of now.
DriveReport DosApp::driveReport(const Guard& guard) {
  auto window = reportWindow_.lock();
  if (!window) window = program_.shared<ReportValues>().window.lock();
  return {std::move(window), Drives, guard};
}

void DosApp::enterLetter(const Guard& guard, const WmiObject& drive, int number) {
  guard.run(
      [&] { List8.add(UCase(letterOf(drive.value("Caption").text())) + std::to_string(number)); });
}

// The label's key is written twice: first with the drive's name, and the word for its kind
// then takes that place.
void DosApp::storeDrive(const Guard& guard, const WmiObject& drive, int number) {
  Drives.judgeType(drive, number, guard);
  const auto write = [&](const char* key, const auto& value) {
    guard.run([&] {
      program_.writeSetting(kSection, letterOf(drive.value("Caption").text()) + key, value());
    });
  };
  write(" Drive Label", [&] { return drive.value("VolumeName").text(); });
  write(" Drive Size", [&] { return FormatNumber(Drives.slot(number).DriveSize.number()); });
  write(" Drive Label", [&] { return Drives.typeWord; });
}

void DosApp::storeDisk(const Guard& guard, const WmiObject& disk, const std::vector<int>& slots,
                       std::int16_t picture) {
  std::string letters;
  std::string labels;
  for (const int number : slots) {
    guard.run([&] { letters += letterOf(Drives.slot(number).DriveCaption); });
    guard.run(
        [&] { labels += (number == slots.front() ? "" : "|") + Drives.slot(number).DriveLabel; });
  }
  guard.run([&] { Drives.PhysicalLetters(toLong(indexOf(disk).number())) = letters; });
  const auto write = [&](const std::string& key, const std::string& value) {
    guard.run([&] { program_.writeSetting(kSection, key + indexOf(disk).text(), value); });
  };
  write("Drive", letters);
  write("Label", labels);
  write("Type", typeOf(picture));
}

// A plain disk takes the word of the drive that was last looked at, which need not be on it.
std::string DosApp::typeOf(std::int16_t picture) const {
  if (picture == kUsbPicture) return "USB";
  if (picture == kPlainDiskPicture) return "HD";
  if (picture == kRamPicture) return "RAM";
  return Drives.typeWord;
}

}  // namespace veltrin
