// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/module_file.h"

#include <gtest/gtest.h>

#include "module_image.h"

namespace veltrin {
namespace {

using namespace std::string_literals;

const std::string kList = "license=GPL\0description=A driver\0description=Another\0"s;

TEST(ModuleValue, IsTheFirstOfItsKey) {
  EXPECT_EQ(moduleValue(kList, "description"), "A driver");
  EXPECT_EQ(moduleValue(kList, "license"), "GPL");
}

TEST(ModuleValue, IsThatOfTheWholeKeyAlone) {
  EXPECT_EQ(moduleValue("descriptions=a\0xdescription=b\0description\0"s, "description"), "");
}

TEST(ModuleValue, MayHaveNoEnd) { EXPECT_EQ(moduleValue("a=1\0b=2"s, "b"), "2"); }

TEST(ModuleInformation, IsTheSectionOfAFileOfEachWidth) {
  EXPECT_EQ(moduleInformation(moduleImage(kList, true)), kList);
  EXPECT_EQ(moduleInformation(moduleImage(kList, false)), kList);
}

TEST(ModuleInformation, IsFoundBeforeASignatureAtTheEnd) {
  EXPECT_EQ(moduleInformation(moduleImage(kList) + "~Module signature appended~\n"), kList);
}

TEST(ModuleInformation, OfAFileThatIsCutOffStaysWithinIt) {
  for (const bool wide : {true, false}) {
    const std::string image = moduleImage(kList, wide);
    for (std::size_t size = 0; size < image.size(); ++size) {
      const std::string cut = image.substr(0, size);
      const std::string_view list = moduleInformation(cut);
      ASSERT_TRUE(list.empty() || list == kList) << size;
    }
  }
}

TEST(ModuleInformation, IsNoneInOtherBytes) {
  EXPECT_EQ(moduleInformation(""), "");
  EXPECT_EQ(moduleInformation("\xFD"
                              "7zXZ"s),
            "");
  EXPECT_EQ(moduleInformation("\177ELF\2\2"s + moduleImage(kList).substr(6)), "");
  EXPECT_EQ(moduleInformation("\177ELF\2\1"s + std::string(5000, '\xFF')), "");
}

}  // namespace
}  // namespace veltrin
