// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/machine/module_image.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;

TEST(WmiSystemDrivers, AreTheModulesOfTheKernel) {
  const TemporaryTree tree;
  FakeMachine machine;
  machine.kernelFacts.release = "6.1";
  tree.put("/proc/modules", "nvme 1 0 - Live 0x0\nloop 1 0 - Live 0x0\nvendor 1 0 - Live 0x0\n");
  tree.put("/etc/modules", "loop\n");
  tree.put("/lib/modules/6.1/modules.dep", "kernel/nvme.ko:\nkernel/loop.ko.xz:\n");
  tree.put("/lib/modules/6.1/kernel/nvme.ko", moduleImage("description=NVM Express\0"s));
  tree.put("/lib/modules/6.1/modules.builtin", "kernel/ext4.ko\n");
  EXPECT_THAT(wmiTexts(tree.files(), machine, "Win32_SystemDriver"),
              ElementsAre("Caption=ext4;Name=ext4;PathName=null;StartMode=Boot;",
                          "Caption=loop;Name=loop;PathName=/lib/modules/6.1/kernel/loop.ko.xz;"
                          "StartMode=Auto;",
                          "Caption=NVM Express;Name=nvme;PathName=/lib/modules/6.1/kernel/nvme.ko;"
                          "StartMode=Manual;",
                          "Caption=vendor;Name=vendor;PathName=null;StartMode=Manual;"));
}

TEST(WmiSystemDrivers, AreNoneWhereTheKernelTellsNone) {
  EXPECT_THAT(wmiTexts(TemporaryTree().files(), {}, "Win32_SystemDriver"), ElementsAre());
}

}  // namespace
}  // namespace veltrin
