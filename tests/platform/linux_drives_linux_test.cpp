// SPDX-License-Identifier: GPL-3.0-or-later
// The room on the drives of Linux.
#include <gtest/gtest.h>
#include <sys/statvfs.h>

#include "platform/linux/linux_drives.h"
#include "tests/machine/block_tree.h"
#include "tests/machine/fake_machine.h"
#include "tests/machine/silent_server.h"

namespace veltrin {
namespace {

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
  LinuxDrivesTest() {
    tree_.disk("pci0000:00/nvme/nvme0", "nvme0n1", "259:0", 1'000'000);
    tree_.partition("nvme0n1p2", "259:2", 800'000);
    tree_.mount("259:2", "/", "ext4", "/dev/nvme0n1p2");
  }

  LinuxDrives drives() const { return LinuxDrives(tree_.files(), machine_); }

  BlockTree tree_;
  std::shared_ptr<FakeMachine> machine_ = std::make_shared<FakeMachine>();
  std::uint32_t sectors_ = 1;
  std::uint32_t bytes_ = 2;
  std::uint32_t free_ = 3;
  std::uint32_t total_ = 4;
  std::uint64_t toCaller_ = 5;
  std::uint64_t all_ = 6;
  std::uint64_t allFree_ = 7;
};

TEST_F(LinuxDrivesTest, CountTheWholeVolumeInClustersAndWhatItsUserMayTake) {
  machine_->rooms["/"] = {4096, 96'000, 50'000, 40'000};
  ASSERT_TRUE(drives().GetDiskFreeSpaceA("C:\\", sectors_, bytes_, free_, total_));
  EXPECT_EQ(sectors_, 8U);
  EXPECT_EQ(bytes_, 512U);
  EXPECT_EQ(free_, 40'000U);
  EXPECT_EQ(total_, 100'000U);
}

TEST_F(LinuxDrivesTest, CountTheWholeVolumeInBytes) {
  machine_->rooms["/"] = {4096, 96'000, 50'000, 40'000};
  ASSERT_TRUE(drives().GetDiskFreeSpaceExA("c:", toCaller_, all_, allFree_));
  EXPECT_EQ(toCaller_, 163'840'000U);
  EXPECT_EQ(all_, 409'600'000U);
  EXPECT_EQ(allFree_, 204'800'000U);
}

TEST_F(LinuxDrivesTest, RefuseADriveThatIsNotThereAndLeaveWhatTheyWereGiven) {
  machine_->rooms["/"] = {4096, 96'000, 50'000, 40'000};
  EXPECT_FALSE(drives().GetDiskFreeSpaceA("D:\\", sectors_, bytes_, free_, total_));
  EXPECT_EQ(sectors_, 1U);
  EXPECT_EQ(bytes_, 2U);
  EXPECT_EQ(free_, 3U);
  EXPECT_EQ(total_, 4U);
  EXPECT_FALSE(drives().GetDiskFreeSpaceExA("D:", toCaller_, all_, allFree_));
  EXPECT_EQ(toCaller_, 5U);
  EXPECT_EQ(all_, 6U);
  EXPECT_EQ(allFree_, 7U);
}

TEST_F(LinuxDrivesTest, RefuseADriveWhoseRoomTheSystemDoesNotTell) {
  EXPECT_FALSE(drives().GetDiskFreeSpaceA("C:\\", sectors_, bytes_, free_, total_));
  EXPECT_FALSE(drives().GetDiskFreeSpaceExA("C:", toCaller_, all_, allFree_));
}

TEST_F(LinuxDrivesTest, SeeADriveThatCameLater) {
  machine_->rooms["/home"] = {4096, 25'000, 3, 2};
  LinuxDrives drives(tree_.files(), machine_);
  EXPECT_FALSE(drives.GetDiskFreeSpaceA("D:\\", sectors_, bytes_, free_, total_));
  tree_.mount("0:50", "/home", "nfs", "server:/home");
  EXPECT_TRUE(drives.GetDiskFreeSpaceA("D:\\", sectors_, bytes_, free_, total_));
  EXPECT_EQ(total_, 25'000U);
}

TEST_F(LinuxDrivesTest, WaitOnceForAServerThatIsGone) {
  const auto server = std::make_shared<SilentServer>();
  server->rooms["/"] = {4096, 96'000, 50'000, 40'000};
  tree_.mount("0:50", "/share", "nfs", "server:/share");
  LinuxDrives drives(tree_.files(), server, TimedQuestions(TimedQuestions::Patience(5)));
  for (int time = 0; time < 3; ++time) {
    EXPECT_FALSE(drives.GetDiskFreeSpaceA("D:\\", sectors_, bytes_, free_, total_));
    EXPECT_FALSE(drives.GetDiskFreeSpaceExA("D:", toCaller_, all_, allFree_));
  }
  EXPECT_EQ(total_, 4U);
  EXPECT_EQ(all_, 6U);
  EXPECT_TRUE(drives.GetDiskFreeSpaceA("C:\\", sectors_, bytes_, free_, total_));
  EXPECT_EQ(server->comeBack(), 1);
}

// --- On the machine of the test ---

TEST(LinuxDrivesHere, TellTheRootFileSystem) {
  struct statvfs told {};
  ASSERT_EQ(statvfs("/", &told), 0);
  const std::uint64_t blocks = std::uint64_t{told.f_blocks} * told.f_frsize;
  std::uint64_t toCaller = 0;
  std::uint64_t all = 0;
  std::uint64_t allFree = 0;
  ASSERT_TRUE(LinuxDrives().GetDiskFreeSpaceExA("C:", toCaller, all, allFree));
  EXPECT_GE(all, blocks);
  EXPECT_LE(toCaller, allFree);
  EXPECT_LE(allFree, all);
  std::uint32_t sectors = 0;
  std::uint32_t bytes = 0;
  std::uint32_t free = 0;
  std::uint32_t total = 0;
  ASSERT_TRUE(LinuxDrives().GetDiskFreeSpaceA("C:\\", sectors, bytes, free, total));
  EXPECT_EQ(bytes, 512U);
  EXPECT_LE(free, total);
  EXPECT_NEAR(static_cast<double>(total) * sectors * bytes, static_cast<double>(all), 1e6);
}

}  // namespace
}  // namespace veltrin
