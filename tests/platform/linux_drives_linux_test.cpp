// The room on the drives of Linux, and the letters that they have.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/statvfs.h>

#include "platform/linux/drive_folders.h"
#include "platform/linux/linux_drives.h"
#include "tests/platform/scratch_folder.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

const char* const kMounts =
    "proc /proc proc rw 0 0\n"
    "/dev/sda2 / ext4 rw 0 0\n"
    "/dev/loop3 /snap/core squashfs ro 0 0\n"
    "/dev/sda1 /boot/efi vfat rw 0 0\n"
    "tmpfs /run tmpfs rw 0 0\n"
    "/dev/sdb1 /media/My\\040Stick\\134 vfat rw 0 0\n"
    "/dev/sdb1 /srv/again vfat rw 0 0\n";

TEST(DriveFolders, AreTheRootAndWhereOtherDevicesAreMounted) {
  EXPECT_THAT(driveFolders(kMounts), ElementsAre("/", "/boot/efi", "/media/My Stick\\"));
}

TEST(DriveFolders, GiveTheDeviceOfTheRootNoSecondLetter) {
  EXPECT_THAT(driveFolders("/dev/sda2 /sysroot ext4 rw 0 0\n"
                           "/dev/sda2 / ext4 rw 0 0\n"
                           "/dev/sda3 /home ext4 rw 0 0\n"),
              ElementsAre("/", "/home"));
}

TEST(DriveFolders, HaveARootThatIsOnNoDevice) {
  EXPECT_THAT(driveFolders("overlay / overlay rw 0 0\n"), ElementsAre("/"));
  EXPECT_THAT(driveFolders(""), ElementsAre("/"));
}

TEST(DriveFolders, EndWithTheAlphabet) {
  std::string mounts;
  for (int number = 0; number < 100; ++number) {
    mounts +=
        "/dev/sd" + std::to_string(number) + " /m" + std::to_string(number) + " ext4 rw 0 0\n";
  }
  const auto folders = driveFolders(mounts);
  EXPECT_EQ(folders.size(), 24U);
  EXPECT_EQ(folderOfDrive("Z:", folders), "/m22");
}

TEST(FolderOfDrive, GoesByTheLetterFromCOn) {
  const auto folders = driveFolders(kMounts);
  EXPECT_EQ(folderOfDrive("C:", folders), "/");
  EXPECT_EQ(folderOfDrive("d:\\", folders), "/boot/efi");
}

TEST(FolderOfDrive, IsEmptyForWhatIsNoDrive) {
  const auto folders = driveFolders(kMounts);
  for (const char* root : {"", "C", "A:", "F:", "C:/", "C:\\x", "\xC3\xB6:"}) {
    EXPECT_EQ(folderOfDrive(root, folders), "") << root;
  }
}

TEST(ClustersOf, AreTheBlocks) {
  const ClusterCount clusters = clustersOf(4096, 1000, 5000);
  EXPECT_EQ(clusters.sectorsPerCluster, 8U);
  EXPECT_EQ(clusters.free, 1000U);
  EXPECT_EQ(clusters.total, 5000U);
}

TEST(ClustersOf, TakeSeveralBlocksWhereTheirNumberIsTooLarge) {
  const ClusterCount clusters = clustersOf(4096, std::uint64_t{1} << 32U, std::uint64_t{1} << 33U);
  EXPECT_EQ(clusters.sectorsPerCluster, 32U);
  EXPECT_EQ(clusters.free, std::uint32_t{1} << 30U);
  EXPECT_EQ(clusters.total, std::uint32_t{1} << 31U);
}

class LinuxDrivesTest : public testing::Test {
 protected:
  ScratchFolder scratch;
  std::uint32_t sectors = 1;
  std::uint32_t bytes = 2;
  std::uint32_t free = 3;
  std::uint32_t total = 4;
};

TEST_F(LinuxDrivesTest, TellTheRootFileSystem) {
  struct statvfs told {};
  ASSERT_EQ(statvfs("/", &told), 0);
  std::uint64_t toCaller = 0;
  std::uint64_t all = 0;
  std::uint64_t allFree = 0;
  ASSERT_TRUE(LinuxDrives().GetDiskFreeSpaceExA("C:", toCaller, all, allFree));
  EXPECT_EQ(all, std::uint64_t{told.f_blocks} * told.f_frsize);
  EXPECT_LE(toCaller, allFree);
  EXPECT_LE(allFree, all);
  ASSERT_TRUE(LinuxDrives().GetDiskFreeSpaceA("C:\\", sectors, bytes, free, total));
  EXPECT_EQ(bytes, 512U);
  EXPECT_LE(free, total);
  EXPECT_NEAR(static_cast<double>(total) * sectors * bytes, static_cast<double>(all), 1e6);
}

TEST_F(LinuxDrivesTest, RefuseADriveThatIsNotThereAndLeaveWhatTheyWereGiven) {
  LinuxDrives drives(scratch.path("none"));
  EXPECT_FALSE(drives.GetDiskFreeSpaceA("D:\\", sectors, bytes, free, total));
  EXPECT_EQ(sectors, 1U);
  EXPECT_EQ(bytes, 2U);
  EXPECT_EQ(free, 3U);
  EXPECT_EQ(total, 4U);
  std::uint64_t toCaller = 5;
  std::uint64_t all = 6;
  std::uint64_t allFree = 7;
  EXPECT_FALSE(drives.GetDiskFreeSpaceExA("D:", toCaller, all, allFree));
  EXPECT_EQ(toCaller, 5U);
  EXPECT_EQ(all, 6U);
  EXPECT_EQ(allFree, 7U);
}

TEST_F(LinuxDrivesTest, RefuseADriveWhoseFolderIsGone) {
  scratch.fill("mounts", "/dev/sdx1 " + scratch.path("gone") + " ext4 rw 0 0\n");
  EXPECT_FALSE(
      LinuxDrives(scratch.path("mounts")).GetDiskFreeSpaceA("D:\\", sectors, bytes, free, total));
}

TEST_F(LinuxDrivesTest, SeeADriveThatCameLater) {
  LinuxDrives drives(scratch.path("mounts"));
  EXPECT_FALSE(drives.GetDiskFreeSpaceA("D:\\", sectors, bytes, free, total));
  scratch.fill("mounts", "/dev/sdx1 " + scratch.folder().string() + " ext4 rw 0 0\n");
  EXPECT_TRUE(drives.GetDiskFreeSpaceA("D:\\", sectors, bytes, free, total));
}

}  // namespace
}  // namespace veltrin
