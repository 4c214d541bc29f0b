// SPDX-License-Identifier: GPL-3.0-or-later
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

TEST(Mounts, TellWhatIsMountedWhere) {
  const TemporaryTree tree;
  tree.put("/proc/self/mountinfo",
           "25 1 259:2 /@ /my\\040home rw,relatime shared:1 master:2 - btrfs /dev/sda\\0112 "
           "rw,errors=x\\040y\n"
           "26 1 0:5 / /dev rw - devtmpfs none\n");
  const std::vector<Mount> mounts = mountsOf(tree.files());
  ASSERT_EQ(mounts.size(), 2U);
  EXPECT_EQ(mounts[0].numbers, "259:2");
  EXPECT_EQ(mounts[0].part, "/@");
  EXPECT_EQ(mounts[0].folder, "/my home");
  EXPECT_EQ(mounts[0].type, "btrfs");
  EXPECT_EQ(mounts[0].source, "/dev/sda\t2");
  EXPECT_EQ(mounts[0].options, "rw,errors=x y");
  EXPECT_EQ(mounts[1].folder, "/dev");
  EXPECT_EQ(mounts[1].options, "");
}

TEST(Mounts, DoNotTellWhatIsHidden) {
  const TemporaryTree tree;
  tree.put("/proc/self/mountinfo",
           "25 1 8:1 / /a rw - ext4 /dev/sda1 rw\n"
           "26 1 8:2 / /b rw - ext4 /dev/sda2 rw\n"
           "27 1 8:3 / /a rw - ext4 /dev/sda3 rw\n");
  const std::vector<Mount> mounts = mountsOf(tree.files());
  ASSERT_EQ(mounts.size(), 2U);
  EXPECT_EQ(mounts[0].source, "/dev/sda2");
  EXPECT_EQ(mounts[1].source, "/dev/sda3");
}

std::vector<std::string> visibleSources(const std::vector<std::string>& lines) {
  MountTable table;
  for (const std::string& line : lines) table.take(line);
  std::vector<std::string> sources;
  for (const Mount& mount : table.visible()) sources.push_back(mount.source);
  return sources;
}

using Sources = std::vector<std::string>;

TEST(MountTable, HidesWhatWasMountedBelowAFolderBeforeTheFolder) {
  EXPECT_EQ(visibleSources({"25 1 8:1 / / rw - ext4 root rw", "26 25 8:2 / /mnt/a rw - ext4 old rw",
                            "27 25 8:3 / /mnt rw - ext4 over rw",
                            "28 25 8:4 / /mnt2 rw - ext4 other rw"}),
            (Sources{"root", "over", "other"}));
}

TEST(MountTable, ShowsWhatIsMountedBelowAFolderAfterTheFolder) {
  EXPECT_EQ(visibleSources({"25 1 8:1 / / rw - ext4 root rw", "26 25 8:3 / /mnt rw - ext4 first rw",
                            "27 26 8:2 / /mnt/a rw - ext4 below rw"}),
            (Sources{"root", "first", "below"}));
}

TEST(MountTable, HidesWhatIsMountedOnSomethingHidden) {
  EXPECT_EQ(
      visibleSources({"25 1 8:1 / / rw - ext4 root rw", "26 25 8:2 / /mnt/a rw - ext4 hidden rw",
                      "27 26 8:3 / /mnt/a/b rw - ext4 deep rw",
                      "28 25 8:4 / /mnt rw - ext4 over rw", "29 28 8:5 / /mnt/a rw - ext4 new rw"}),
      (Sources{"root", "over", "new"}));
}

TEST(MountTable, HidesAllBelowAFolderThatIsMountedAnew) {
  EXPECT_EQ(
      visibleSources({"25 1 8:1 / / rw - ext4 root rw", "26 25 8:2 / /a rw - ext4 first rw",
                      "27 26 8:3 / /a/b rw - ext4 below rw", "28 26 8:4 / /a rw - ext4 second rw"}),
      (Sources{"root", "second"}));
}

TEST(MountTable, GoesByTheParentsWhateverTheOrder) {
  EXPECT_EQ(
      visibleSources({"28 25 8:4 / /mnt rw - ext4 over rw", "27 30 8:3 / /srv/x rw - ext4 below rw",
                      "26 25 8:2 / /mnt/a rw - ext4 hidden rw",
                      "30 25 8:5 / /srv rw - ext4 served rw", "25 1 8:1 / / rw - ext4 root rw"}),
      (Sources{"over", "below", "served", "root"}));
}

TEST(MountTable, TakesAFirstOneThatIsItsOwnParent) {
  EXPECT_EQ(
      visibleSources({"1 1 0:2 / / rw - rootfs rootfs rw", "20 1 8:1 / /home rw - ext4 home rw"}),
      (Sources{"rootfs", "home"}));
  EXPECT_EQ(
      visibleSources({"1 1 0:2 / / rw - rootfs rootfs rw", "20 1 8:1 / /home rw - ext4 home rw",
                      "25 1 8:2 / / rw - ext4 root rw"}),
      (Sources{"root"}));
}

TEST(MountTable, EndsWithParentsInACircle) {
  EXPECT_EQ(visibleSources({"1 2 0:2 / /a rw - ext4 a rw", "2 1 8:1 / /b rw - ext4 b rw"}),
            (Sources{"a", "b"}));
}

// A file of the network's might never be told of.
TEST(Mounts, LookForPlainFilesAmongThePartsOfDevicesAlone) {
  const TemporaryTree tree;
  tree.put("/a", "");
  tree.put("/b", "");
  tree.put("/c", "");
  tree.put("/proc/self/mountinfo",
           "25 1 8:1 /part /a rw - ext4 /dev/sda1 rw\n"
           "26 1 0:50 /part /b rw - nfs server:/x rw\n"
           "27 1 8:2 / /c rw - ext4 /dev/sda2 rw\n");
  const std::vector<Mount> mounts = mountsOf(tree.files());
  ASSERT_EQ(mounts.size(), 2U);
  EXPECT_EQ(mounts[0].folder, "/b");
  EXPECT_EQ(mounts[1].folder, "/c");
}

std::string blockDevice(const TemporaryTree& tree, const std::string& numbers,
                        const std::string& source) {
  return blockDeviceOf(tree.files(), {numbers, "/", "/", "btrfs", source, "rw"});
}

TEST(BlockDeviceOf, GoesByTheNumbersAndThenByTheSource) {
  const TemporaryTree tree;
  tree.link("/sys/dev/block/8:2", "../../devices/x/block/sda/sda2");
  tree.put("/sys/class/block/sda3/dev", "8:3\n");
  EXPECT_EQ(blockDevice(tree, "8:2", "/dev/sda3"), "sda2");
  EXPECT_EQ(blockDevice(tree, "0:25", "/dev/sda3"), "sda3");
}

TEST(BlockDeviceOf, FollowsALinkInDev) {
  const TemporaryTree tree;
  tree.put("/sys/class/block/dm-0/dev", "254:0\n");
  tree.link("/dev/mapper/vg-root", "../dm-0");
  EXPECT_EQ(blockDevice(tree, "0:25", "/dev/mapper/vg-root"), "dm-0");
}

TEST(BlockDeviceOf, KnowsNamesWithASlash) {
  const TemporaryTree tree;
  tree.put("/sys/class/block/cciss!c0d0p1/dev", "104:1\n");
  EXPECT_EQ(blockDevice(tree, "0:25", "/dev/cciss/c0d0p1"), "cciss!c0d0p1");
}

TEST(BlockDeviceOf, IsEmptyForWhatTheKernelDoesNotKnow) {
  const TemporaryTree tree;
  for (const char* source : {"/dev/sda9", "/dev/root", "none", "server:/dev/sda", ""}) {
    EXPECT_EQ(blockDevice(tree, "0:25", source), "") << source;
  }
}

}  // namespace
}  // namespace veltrin
