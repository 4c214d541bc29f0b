// SPDX-License-Identifier: GPL-3.0-or-later
// The routines about one drive, with the real fsutil on the machine of the test.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/statvfs.h>

#include "platform/linux/linux_drives.h"
#include "platform/linux/linux_processes.h"
#include "sysinfo/AModule1.h"
#include "sysinfo/DosApp.h"
#include "tests/platform/children.h"
#include "tests/platform/partly_real.h"

namespace veltrin {
namespace {

class DriveToolsHere : public testing::Test {
 protected:
  DriveToolsHere() {
    prepare(program_);
    program_.start.WinDir = "C:\\Windows";
  }

  void TearDown() override { EXPECT_TRUE(noChildRemains()); }

  Simulation simulation_;
  LinuxProcesses processes_{VELTRIN_TOOLS};
  LinuxDrives drives_;
  Platform platform_ = partlyReal(simulation_, processes_, simulation_.wmi, drives_);
  Program program_{platform_};
  std::shared_ptr<DosApp> form_ = program_.keep<DosApp>();
};

TEST_F(DriveToolsHere, TellWhetherTheRootIsDirty) {
  form_->CheckDirty("C:");
  ASSERT_EQ(form_->List1.count(), 1U);
  EXPECT_THAT(form_->List1.item(0),
              testing::AnyOf("Volume - C: is NOT Dirty", "Volume - C: is Dirty",
                             testing::StartsWith("Whether C: is dirty is not told")));
}

TEST_F(DriveToolsHere, TellTheRoomOfTheRoot) {
  struct statvfs told {};
  ASSERT_EQ(statvfs("/", &told), 0);
  form_->DriveCInfo("C:");
  const auto& values = program_.shared<DriveValues>();
  EXPECT_THAT(values.FreeText, testing::MatchesRegex("[1-9][0-9]* (TB|GB|MB|KB)"));
  const double gigabytes =
      static_cast<double>(told.f_bfree) * static_cast<double>(told.f_frsize) / 1e9;
  if (gigabytes > 3 && gigabytes < 1900) {
    EXPECT_NEAR(std::stod(values.FreeText), gigabytes, 2);
  }
  EXPECT_GE(std::stod(values.TotalText), std::stod(values.FreeText));
}

}  // namespace
}  // namespace veltrin
