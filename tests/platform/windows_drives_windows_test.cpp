// SPDX-License-Identifier: GPL-3.0-or-later
// The room on the drives of Windows.
#include <gtest/gtest.h>

#include "platform/windows/windows_drives.h"

namespace veltrin {
namespace {

TEST(WindowsDrives, TellTheDriveOfTheSystemAlikeInClustersAndBytes) {
  WindowsDrives drives;
  std::uint32_t sectors = 0;
  std::uint32_t bytes = 0;
  std::uint32_t free = 0;
  std::uint32_t total = 0;
  ASSERT_TRUE(drives.GetDiskFreeSpaceA("C:\\", sectors, bytes, free, total));
  EXPECT_GT(sectors, 0U);
  EXPECT_GT(bytes, 0U);
  EXPECT_LE(free, total);
  std::uint64_t toCaller = 0;
  std::uint64_t all = 0;
  std::uint64_t allFree = 0;
  ASSERT_TRUE(drives.GetDiskFreeSpaceExA("C:", toCaller, all, allFree));
  EXPECT_GT(all, 0U);
  EXPECT_LE(allFree, all);
  EXPECT_LE(toCaller, all);
}

TEST(WindowsDrives, RefuseADriveThatIsNotThereAndLeaveWhatTheyWereGiven) {
  WindowsDrives drives;
  std::uint32_t sectors = 1;
  std::uint32_t bytes = 2;
  std::uint32_t free = 3;
  std::uint32_t total = 4;
  EXPECT_FALSE(drives.GetDiskFreeSpaceA("Q:\\", sectors, bytes, free, total));
  EXPECT_EQ(sectors, 1U);
  EXPECT_EQ(bytes, 2U);
  EXPECT_EQ(free, 3U);
  EXPECT_EQ(total, 4U);
  std::uint64_t toCaller = 5;
  std::uint64_t all = 6;
  std::uint64_t allFree = 7;
  EXPECT_FALSE(drives.GetDiskFreeSpaceExA("Q:", toCaller, all, allFree));
  EXPECT_EQ(toCaller, 5U);
  EXPECT_EQ(all, 6U);
  EXPECT_EQ(allFree, 7U);
}

}  // namespace
}  // namespace veltrin
