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

}  // namespace
}  // namespace veltrin
