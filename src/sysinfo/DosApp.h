// SPDX-License-Identifier: GPL-3.0-or-later
// The full form of the summary of the machine, the reports about its drives, and the buffers
// in which they are read. The window is loaded and never shown.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "forms/list_box.h"
#include "forms/text_box.h"
#include "frame/program.h"
#include "frame/window_runner.h"
#include "sysinfo/drive_report.h"
#include "sysinfo/drive_table.h"
#include "sysinfo/drive_walk.h"
#include "sysinfo/guard.h"

namespace veltrin {

class frmSysInfo;

class DosApp : public Form {
 public:
  explicit DosApp(Program& program);

  TextBox DosBox;  // the tool's text
  ListBox List1;   // its lines, with their indents
  ListBox List2;   // slots of the drives that are not yet found on a disk
  ListBox List3;   // names of the hotfixes; grows with each run
  ListBox List4;   // letters of the drives that are
  ListBox List5;   // numbers of the disks they were found on
  ListBox List6;
  ListBox List7;
  ListBox List8;  // letters and slots of all drives ("C1"); grows with each run

  // A mark that the last text of the tool had less than 10 lines: 1, else 0.
  int ShortText = 0;

  // The drives that all reports found so far.
  DriveTable Drives;

  // Collects the summary anew, and then looks at the Mode: "1" ends it, "3" looks for the
  // drives, and any other prints the report into the window that is loaded when it begins,
  // also when that one is closed meanwhile. Without a window there is no report.
  void SysInfo(const Loose& Mode);

  // Fills the summary's empty memory slots. Does nothing when the service that knows the
  // banks does not answer.
  void getmem();

  // Finds out which drive lies on which disk and reports it, in a chain. Each finds it anew:
  // TEST keeps it in the table, and goes on with Test2 unless the Mode is 1. Test2 also
  // writes it to the settings, and goes on with Test3, which does the same and prints to the
  // report's window. TEST and Test2 go on behind what fails. Test3 throws StatementFailed at
  // the first. (TEST stands in brackets as a test library has a macro of that name.)
  void(TEST)(const Loose& Mode);
  void Test2();
  void Test3();

  // Prints another form of the last report, drives first, and writes nothing to the settings.
  void GetDrive();

  // Asks the system's tool whether a drive ("C:") was left in the midst of a change. The
  // lines of its answer are then in List1.
  void CheckDirty(const std::string& Drive);

  // Asks the system's tool for what it knows of a drive, and keeps the drive's room in the
  // DriveValues. The last answer is then in DosBox. Throws StatementFailed at the first thing
  // that fails.
  void DriveCInfo(const std::string& Drive);

  // Writes 20 MB of blanks to the drive that the DriveValues name.
  void testdrivers();

 private:
  void objDOSB_ReceiveOutputs(const std::string& chunk);

  double collect();
  void runTool();
  void fillLines();
  std::string readLines();
  void adjustFields();

  DriveWalk driveWalk(const Guard& guard);
  void storeDrive(const Guard& guard, const WmiObject& drive, int number);
  void storeDisk(const Guard& guard, const WmiObject& disk, const std::vector<int>& slots,
                 std::int16_t picture);
  void enterLetter(const Guard& guard, const WmiObject& drive, int number);
  std::string typeOf(std::int16_t picture) const;
  DriveReport driveReport(const Guard& guard);
  void runDriveTool(const std::string& arguments);
  void askForClusters(const std::string& drive);

  Program& program_;
  std::weak_ptr<frmSysInfo> reportWindow_;  // of the report that is being printed
  WindowRunner objDOSB;
};

}  // namespace veltrin
