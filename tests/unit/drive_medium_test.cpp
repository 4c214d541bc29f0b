// SPDX-License-Identifier: GPL-3.0-or-later
// Which drives count as those of no medium.
#include <gtest/gtest.h>

#include "sysinfo/drive_table.h"

namespace veltrin {
namespace {

bool isOfNoMedium(const WmiValue& media) {
  DriveSlot slot;
  slot.DriveMedia = media;
  return slot.isOfNoMedium();
}

TEST(DriveMedium, IsNoneForZeroInEitherForm) {
  EXPECT_TRUE(isOfNoMedium(WmiValue(0)));
  EXPECT_TRUE(isOfNoMedium(WmiValue("0")));
}

// 1 is the first of the floppies, 12 a fixed disk.
TEST(DriveMedium, IsOneForEveryOtherNumber) {
  for (const int medium : {1, 2, 11, 12}) EXPECT_FALSE(isOfNoMedium(WmiValue(medium))) << medium;
}

TEST(DriveMedium, IsNotKnownToBeNoneWhereItIsNotTold) { EXPECT_FALSE(isOfNoMedium(WmiValue())); }

}  // namespace
}  // namespace veltrin
