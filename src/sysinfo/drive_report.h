// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of the report that tell of drives.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "forms/list_box.h"
#include "platform/wmi.h"
#include "sysinfo/drive_table.h"
#include "sysinfo/guard.h"

namespace veltrin {

class frmSysInfo;

class DriveReport {
 public:
  // Prints to the report's window; without one it prints nothing.
  DriveReport(std::shared_ptr<frmSysInfo> window, DriveTable& table, const Guard& guard)
      : window_(std::move(window)), table_(table), guard_(guard) {}

  // One line, and one that only keeps a distance.
  void line(const std::string& text, std::int16_t picture = kNoDrivePicture) const;
  void gap() const;

  // The disks with the drives that are known to lie on them. `slots` finds a drive's slot by
  // its letter: "C1".
  void physicalDrives(const ListBox& slots) const;

  // One logical drive with its size, `between` before that.
  void logicalDrive(const WmiObject& drive, int number, const std::string& between) const;

  // The drives that were found on a disk.
  void match(const WmiObject& disk, const std::vector<int>& slots, std::int16_t picture) const;

  // What a disk tells of itself; its heads where these are wanted.
  void details(const WmiObject& disk) const;
  void heads(const WmiObject& disk) const;

 private:
  void physicalDrive(int disk, const std::string& letters, const ListBox& slots) const;
  void emptyDrive(const WmiObject& drive) const;
  void namedDrive(const WmiObject& drive, int number, const std::string& between) const;
  void fact(const char* label, const WmiObject& disk, const char* property) const;
  void figure(const char* label, const WmiObject& disk, const char* property) const;

  std::shared_ptr<frmSysInfo> window_;
  DriveTable& table_;
  Guard guard_;
};

}  // namespace veltrin
