// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;

TEST(WmiProducts, AreTheInstalledPackages) {
  const TemporaryTree tree;
  tree.put("/var/lib/dpkg/status",
           "Package: zlib1g\nStatus: install ok installed\nVersion: 1:1.2.13\n\n"
           "Package: bash\nStatus: install ok installed\nVersion: 5.2.15-2\n\n"
           "Package: odd\nStatus: install ok installed\n\n"
           "Package: old\nStatus: deinstall ok config-files\nVersion: 1\n\n");
  EXPECT_THAT(wmiTexts(tree.files(), {}, "Win32_Product"),
              ElementsAre("Name=bash;Version=5.2.15-2;", "Name=odd;Version=null;",
                          "Name=zlib1g;Version=1:1.2.13;"));
}

TEST(WmiProducts, AreAllOfFiveThousand) {
  const TemporaryTree tree;
  std::string database;
  for (int i = 0; i < 5000; ++i) {
    database += "P:package" + std::to_string(i) + "\nV:1\n\n";
  }
  tree.put("/lib/apk/db/installed", database);
  EXPECT_EQ(wmiAnswer(tree.files(), {}, "Win32_Product").size(), 5000U);
}

TEST(WmiProducts, AreNoneWithoutADatabase) {
  EXPECT_THAT(wmiTexts(TemporaryTree().files(), {}, "Win32_Product"), ElementsAre());
}

}  // namespace
}  // namespace veltrin
