// SPDX-License-Identifier: GPL-3.0-or-later
// The drive reports on the simulated platform.
#pragma once

#include "simulated/reported_run.h"
#include "sysinfo/DosApp.h"

namespace veltrin {

class DriveRun : public ReportedRun {
 protected:
  static constexpr std::int64_t kCylinder = 8'225'280;  // bytes

  DriveRun() { answerQueries(); }

  static WmiObject drive(const std::string& caption, int media, const WmiValue& label) {
    return {{{"Caption", caption}, {"MediaType", media}, {"VolumeName", label}}};
  }

  // A logical drive of so many cylinders; 0 for one without a medium.
  void addDrive(const std::string& caption, int media, const WmiValue& label,
                std::uint32_t cylinders) {
    drives.push_back(drive(caption, media, label));
    if (cylinders > 0) {
      simulation.drives.clusters[caption + "\\"] = {1, 512, 0, cylinders * 16'065};
    }
    answerQueries();
  }

  void addDisk(int index, int partitions, std::int64_t size, const std::string& type = "IDE") {
    const std::string number = std::to_string(index);
    disks.push_back({{{"Index", index},
                      {"DeviceID", "\\\\.\\PHYSICALDRIVE" + number},
                      {"Model", "Disk " + number},
                      {"InterfaceType", type},
                      {"Size", std::to_string(size)},
                      {"Partitions", partitions},
                      {"BytesPerSector", 512},
                      {"SectorsPerTrack", 63},
                      {"TotalCylinders", "9729"},
                      {"TotalTracks", "2480895"},
                      {"TracksPerCylinder", 255},
                      {"TotalHeads", 255}}});
    answerQueries();
  }

  // Lets the service answer with these drives and disks.
  void answerQueries() {
    simulation.wmi.answers[kDrivesQuery] = drives;
    simulation.wmi.answers[kDisksQuery] = disks;
  }

  // Runs the chain. In brackets the name is not the test library's macro.
  void runChain(const Loose& mode) { (form->TEST)(mode); }

  std::string setting(const std::string& key) { return program.readSetting("System", key); }

  static ReportLines itemsOf(const ListBox& list) {
    ReportLines items;
    for (std::size_t index = 0; index < list.count(); ++index) items.push_back(list.item(index));
    return items;
  }

  std::string iconOf(int number) const { return form->Drives.slot(number).DriveIcon.text(); }

  static constexpr const char* kDrivesQuery = "Select * from Win32_LogicalDisk";
  static constexpr const char* kDisksQuery = "Select * from Win32_DiskDrive";

  std::vector<WmiObject> drives;
  std::vector<WmiObject> disks;
  std::shared_ptr<DosApp> form = program.keep<DosApp>();
};

}  // namespace veltrin
