// SPDX-License-Identifier: GPL-3.0-or-later
// The lists in which the drives wait for their disks, from one report to the next.
#include "simulated/drive_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

using DriveLists = DriveRun;

// A drive that no disk was found for would wait twice, and not be the only one any more.
TEST_F(DriveLists, BeginAnewWithEachReport) {
  addDrive("C:", 12, "SYSTEM", 100);
  for (int report = 0; report < 3; ++report) {
    runChain("1");
    EXPECT_THAT(itemsOf(form->List2), ElementsAre("1"));
  }
}

TEST_F(DriveLists, TakeTheOnlyDriveForADiskOfAnotherSizeInEachReport) {
  addDrive("C:", 12, "SYSTEM", 100);
  addDisk(0, 1, 7 * kCylinder, "USB");
  for (int report = 0; report < 2; ++report) {
    form->Drives.slot(1).DriveIcon = Loose();
    runChain("1");
    EXPECT_EQ(iconOf(1), "34");
  }
}

// The letters of those that were found, and the numbers of their disks.
TEST_F(DriveLists, HaveADriveThatWasFoundOnce) {
  addDrive("C:", 12, "SYSTEM", 100);
  addDisk(3, 1, 100 * kCylinder);
  for (int report = 0; report < 2; ++report) {
    runChain("1");
    EXPECT_THAT(itemsOf(form->List4), ElementsAre("C"));
    EXPECT_THAT(itemsOf(form->List5), ElementsAre("3"));
  }
}

}  // namespace
}  // namespace veltrin
