// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/board.h"

#include <gtest/gtest.h>

#include "smbios_table.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

const std::string kTable = smbiosTable({SmbiosPart(2, 0x0F)
                                            .text(0x04, "Table Works")
                                            .text(0x05, "Table Board")
                                            .text(0x06, "Rev 1")
                                            .text(0x07, "123"),
                                        SmbiosPart(2, 0x0F).text(0x05, "Daughter Board")});

TEST(Board, IsReadFromTheKernelsTexts) {
  const TemporaryTree tree;
  tree.put("/sys/class/dmi/id/board_vendor", "Example Works\n");
  tree.put("/sys/class/dmi/id/board_name", "Board 7 \n");
  tree.put("/sys/class/dmi/id/board_version", "1.0\n");
  tree.makeFolder("/sys/class/dmi/id/board_serial");
  tree.put(kSmbiosFile, kTable);
  EXPECT_EQ(boardFacts(tree.files()), (BoardFacts{"Example Works", "Board 7", "1.0", ""}));
}

TEST(Board, IsReadFromTheTableWhereThereAreNoTexts) {
  const TemporaryTree tree;
  tree.put(kSmbiosFile, kTable);
  EXPECT_EQ(boardFacts(tree.files()), (BoardFacts{"Table Works", "Table Board", "Rev 1", "123"}));
}

TEST(Board, IsUnknownWhereNobodyTellsIt) {
  EXPECT_EQ(boardFacts(TemporaryTree().files()), BoardFacts());
}

}  // namespace
}  // namespace veltrin
