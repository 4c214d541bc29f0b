#include "machine/mounts.h"

#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

std::string deviceOf(const std::string& mounts) {
  const TemporaryTree tree;
  tree.put("/proc/self/mountinfo", mounts);
  return bootDevice(tree.files());
}

TEST(BootDevice, HoldsTheFolderOfTheKernel) {
  EXPECT_EQ(deviceOf("25 1 259:2 / / rw,relatime shared:1 - ext4 /dev/nvme0n1p2 rw\n"
                     "30 25 259:1 / /boot rw shared:7 master:2 - ext4 /dev/nvme0n1p1 rw\n"
                     "31 30 259:3 / /boot/efi rw - vfat /dev/nvme0n1p3 rw\n"),
            "/dev/nvme0n1p1");
}

TEST(BootDevice, HoldsTheRootWhereTheKernelLiesInIt) {
  EXPECT_EQ(deviceOf("22 25 0:21 / /proc rw - proc proc rw\n"
                     "25 1 259:2 / / rw,relatime - ext4 /dev/nvme0n1p2 rw\n"),
            "/dev/nvme0n1p2");
}

TEST(BootDevice, IsTheOneMountedLast) {
  EXPECT_EQ(deviceOf("25 1 0:2 / / rw - ext4 /dev/sda1 rw\n"
                     "26 25 8:2 / / rw - ext4 /dev/sda2 rw\n"),
            "/dev/sda2");
}

TEST(BootDevice, WaitingToBeMountedIsTheRoots) {
  EXPECT_EQ(deviceOf("25 1 8:2 / / rw - ext4 /dev/sda2 rw\n"
                     "30 25 0:40 / /boot rw - autofs systemd-1 rw\n"),
            "/dev/sda2");
}

TEST(BootDevice, WithoutANameOfItsOwnIsFoundByItsNumbers) {
  const TemporaryTree tree;
  tree.put("/proc/self/mountinfo", "25 1 179:2 / / rw - ext4 /dev/root rw\n");
  EXPECT_EQ(bootDevice(tree.files()), "");
  tree.link("/sys/dev/block/179:2", "../../devices/platform/mmc0/block/mmcblk0/mmcblk0p2");
  EXPECT_EQ(bootDevice(tree.files()), "/dev/mmcblk0p2");
}

TEST(BootDevice, MayBeADataset) {
  EXPECT_EQ(deviceOf("25 1 0:25 / / rw - zfs rpool/ROOT/my\\040system rw\n"),
            "rpool/ROOT/my system");
}

TEST(BootDevice, OfAContainerIsUnknown) {
  EXPECT_EQ(deviceOf("25 1 0:50 / / rw - overlay overlay rw,lowerdir=/var/lib/x\n"), "");
}

TEST(BootDevice, IsUnknownWithoutASoundList) {
  EXPECT_EQ(bootDevice(TemporaryTree().files()), "");
  for (const char* text : {"", "25 1 8:2 / /\n", "25 1 8:2 / / rw -\n", "25 1 8:2 / / rw - ext4\n",
                           "\xFF\x01 / / / / - x"}) {
    EXPECT_EQ(deviceOf(text), "") << text;
  }
}

}  // namespace
}  // namespace veltrin
