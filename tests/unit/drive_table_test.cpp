// SPDX-License-Identifier: GPL-3.0-or-later
// What the table of drives makes of clusters and of the kinds of drives.
#include "sysinfo/drive_table.h"

#include <gtest/gtest.h>

namespace veltrin {
namespace {

TEST(DriveSlot, RoundsItsSizeToWholeCylinders) {
  DriveSlot slot;
  slot.takeSizes(8, 4096);
  EXPECT_EQ(slot.DriveSize, Loose(16'450'560));
  EXPECT_EQ(slot.DriveSizeLess1, Loose(8'225'280));
  EXPECT_EQ(slot.DriveSizePlus5, Loose(57'576'960));
  EXPECT_EQ(slot.DriveSizeLess5, Loose(-24'675'840));
}

TEST(DriveSlot, RoundsHalfACylinderUp) {
  DriveSlot slot;
  slot.takeSizes(1, 16'065 * 3 / 2 + 1);
  EXPECT_EQ(slot.DriveSize, Loose(2 * 8'225'280));
}

TEST(DriveSlot, OfLessThanHalfACylinderIsNothing) {
  DriveSlot slot;
  slot.takeSizes(1, 8'000);
  EXPECT_EQ(slot.DriveSize, Loose(0));
  EXPECT_EQ(slot.DriveSizeLess1, Loose(-8'225'280));
}

TEST(DriveSlot, HasNoSizesAtFirst) { EXPECT_TRUE(DriveSlot().DriveSize.isEmpty()); }

TEST(DriveSlot, KeepsItsSizesWithoutAMedium) {
  DriveSlot slot;
  slot.takeSizes(1, 16'065);
  slot.takeSizes(8, 0);
  EXPECT_EQ(slot.DriveSize, Loose(8'225'280));
  EXPECT_EQ(slot.DriveSizePlus5, Loose(6 * 8'225'280));
}

TEST(DriveSlot, OfTheLargestDriveIsExact) {
  DriveSlot slot;
  slot.takeSizes(128, 4'294'967'295U);
  EXPECT_EQ(slot.DriveSize.text(), "281474979125760");
}

TEST(DriveTable, EndsBehindItsLastSlotAndDisk) {
  DriveTable table;
  EXPECT_NO_THROW(table.slot(26));
  EXPECT_THROW(table.slot(27), StatementFailed);
  EXPECT_THROW(table.slot(-1), StatementFailed);
  EXPECT_NO_THROW(table.PhysicalLetters(0));
  EXPECT_NO_THROW(table.PhysicalLetters(25));
  EXPECT_THROW(table.PhysicalLetters(26), StatementFailed);
  EXPECT_THROW(table.PhysicalLetters(-1), StatementFailed);
}

struct TypeCase {
  WmiValue media;
  WmiValue name;
  const char* icon;
  const char* word;
};

TEST(DriveTable, FindsTheWordForADriveTheLastThatFitsWins) {
  for (const TypeCase& each : {
           TypeCase{0, "x", "", "NET"},
           TypeCase{5, "x", "", "FLP"},
           TypeCase{11, "x", "", "DVD"},
           TypeCase{12, "x", "", "HDR"},
           TypeCase{"12", "x", "15", "HDR"},
           TypeCase{12, "My RamDisk", "", "RAM"},
           TypeCase{12, "ram drive", "", "RAM"},
           TypeCase{12, "Gram", "", "HDR"},
           TypeCase{11, "RAM 1", "34", "USB"},
           TypeCase{12, WmiValue(), "34", "USB"},
           TypeCase{2, "x", "", "as before"},
           TypeCase{WmiValue(), WmiValue(), "", "as before"},
       }) {
    DriveTable table;
    table.typeWord = "as before";
    table.slot(3).DriveMedia = each.media;
    table.slot(3).DriveIcon = each.icon;
    table.judgeType({{{"VolumeName", each.name}}}, 3, Guard::leaving());
    EXPECT_EQ(table.typeWord, each.word) << each.name.text();
  }
}

TEST(DriveTable, ADriveWithoutANamePropertyFallsIntoTheNamesBody) {
  DriveTable table;
  table.slot(1).DriveMedia = 12;
  table.judgeType({}, 1, Guard::skipping());
  EXPECT_EQ(table.typeWord, "RAM");
  EXPECT_THROW(table.judgeType({}, 1, Guard::leaving()), StatementFailed);
}

}  // namespace
}  // namespace veltrin
