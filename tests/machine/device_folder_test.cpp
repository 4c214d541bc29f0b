// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/device_folder.h"

#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

TEST(EventValue, IsTheWholeRestOfTheLineOfItsKey) {
  constexpr const char* kText = "DRIVER_OF=no\nDRIVER=a=\"b\" \\c\nDRIVER=second\n";
  EXPECT_EQ(eventValue(kText, "DRIVER"), "a=\"b\" \\c");
}

TEST(EventValue, IsEmptyWithoutItsKey) {
  for (const char* text : {"", "\n\n", "DRIVER", "XDRIVER=a", " DRIVER=a", "DRIVE=R"}) {
    EXPECT_EQ(eventValue(text, "DRIVER"), "") << text;
  }
}

TEST(DriverIn, IsWhatTheLinkEndsWith) {
  const TemporaryTree tree;
  tree.link("/a/driver", "../../../bus/pci/drivers/ahci");
  tree.link("/b/driver", "lonely");
  tree.put("/c/driver", "no link");
  EXPECT_EQ(driverIn(tree.files(), "/a"), "ahci");
  EXPECT_EQ(driverIn(tree.files(), "/b"), "lonely");
  EXPECT_EQ(driverIn(tree.files(), "/c"), "");
  EXPECT_EQ(driverIn(tree.files(), "/d"), "");
}

TEST(JoinedWords, HaveABlankBetweenTwoOnly) {
  EXPECT_EQ(joinedWords("Example", "Plug"), "Example Plug");
  EXPECT_EQ(joinedWords("", "Plug"), "Plug");
  EXPECT_EQ(joinedWords("Example", ""), "Example");
}

}  // namespace
}  // namespace veltrin
