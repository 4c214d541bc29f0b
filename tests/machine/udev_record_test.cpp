// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/udev_record.h"

#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

constexpr const char* kRecord =
    "S:disk/by-label/My\\x20Data\n"
    "G:systemd\n"
    "E:ID_FS_LABEL=My_Data\n"
    "E:ID_FS_LABEL_ENC=My\\x20Data\\x5c\n"
    "E:ID_FS_TYPE=\n"
    "Q:ID_FS_UUID=of another kind of line\n";

class UdevRecordTest : public ::testing::Test {
 protected:
  UdevRecordTest() { tree_.put("/run/udev/data/b8:1", kRecord); }

  TemporaryTree tree_;
};

TEST_F(UdevRecordTest, TellsAPropertyByItsWholeName) {
  const UdevRecord record(tree_.files(), "b8:1");
  EXPECT_EQ(record.value("ID_FS_LABEL"), "My_Data");
  EXPECT_EQ(record.value("ID_FS_LAB"), "");
  EXPECT_EQ(record.value("ID_FS_TYPE"), "");
}

TEST_F(UdevRecordTest, TellsPropertiesOnly) {
  EXPECT_EQ(UdevRecord(tree_.files(), "b8:1").value("ID_FS_UUID"), "");
}

TEST_F(UdevRecordTest, UndoesTheEscapesOfAnEncodedOne) {
  EXPECT_EQ(UdevRecord(tree_.files(), "b8:1").decoded("ID_FS_LABEL_ENC"), "My Data\\");
}

TEST_F(UdevRecordTest, IsEmptyForADeviceThatUdevDoesNotKnow) {
  EXPECT_EQ(UdevRecord(tree_.files(), "b8:2").value("ID_FS_LABEL"), "");
}

TEST(UndoHexEscapes, LeavesWhatIsNone) {
  for (const char* text : {"", "\\", "\\x", "\\x2", "\\xg0", "\\x 20", "\\040", "x20"}) {
    EXPECT_EQ(undoHexEscapes(text), text);
  }
}

TEST(UndoHexEscapes, TakesDigitsOfBothCases) { EXPECT_EQ(undoHexEscapes("\\xc3\\xB6!"), "ö!"); }

}  // namespace
}  // namespace veltrin
