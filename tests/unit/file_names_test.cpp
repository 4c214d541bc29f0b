// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/file_names.h"

#include <gtest/gtest.h>
#include <string>

#include "text/statement.h"

namespace veltrin {
namespace {

TEST(AcceptableFileName, TakesCommonNames) {
  for (const char* name : {"PingTest.txt", "a", "My results 2.csv", ".hidden", "a.b.c", "x (1).txt",
                           "h\xC3\xB6st.txt", "'quoted'", "a,b;c=d", " leading"}) {
    EXPECT_TRUE(acceptableFileName(name)) << name;
  }
}

TEST(AcceptableFileName, RefusesAnEmptyName) { EXPECT_FALSE(acceptableFileName("")); }

TEST(AcceptableFileName, RefusesEachForbiddenCharacter) {
  for (const char c : std::string("\\/:*?\"<>|")) {
    EXPECT_FALSE(acceptableFileName(std::string("a") + c + "b")) << c;
  }
}

TEST(AcceptableFileName, RefusesEachControlCharacter) {
  for (char c = 0; c < 0x20; ++c) {
    EXPECT_FALSE(acceptableFileName(std::string("a") + c + "b")) << static_cast<int>(c);
  }
}

TEST(AcceptableFileName, RefusesABlankOrADotAtTheEnd) {
  for (const char* name : {"a ", "a.", "a.txt.", "a.txt ", ".", "..", " "}) {
    EXPECT_FALSE(acceptableFileName(name)) << name;
  }
}

TEST(AcceptableFileName, RefusesDevicesInAnyCase) {
  for (const char* name : {"con", "PRN", "Aux", "nUL", "com1", "COM9", "lpt1", "Lpt9"}) {
    EXPECT_FALSE(acceptableFileName(name)) << name;
  }
}

TEST(AcceptableFileName, RefusesDevicesWithAnExtension) {
  for (const char* name : {"con.txt", "NUL.tar.gz", "com1.log", "aux .txt"}) {
    EXPECT_FALSE(acceptableFileName(name)) << name;
  }
}

TEST(AcceptableFileName, RefusesPortsWithASuperscriptDigit) {
  for (const char* name : {"com\xC2\xB9", "lpt\xC2\xB2", "com\xC2\xB3.txt"}) {
    EXPECT_FALSE(acceptableFileName(name)) << name;
  }
}

TEST(AcceptableFileName, TakesNamesThatOnlyStartLikeADevice) {
  for (const char* name : {"console.txt", "com0", "com10", "com", "lpt", "lptx", "nul_", "x.con"}) {
    EXPECT_TRUE(acceptableFileName(name)) << name;
  }
}

TEST(AcceptableFileName, TakesAtMost259Characters) {
  EXPECT_TRUE(acceptableFileName(std::string(259, 'a')));
  EXPECT_FALSE(acceptableFileName(std::string(260, 'a')));
}

TEST(LengthInUtf16, CountsUnitsAndNotBytes) {
  EXPECT_EQ(lengthInUtf16(""), 0U);
  EXPECT_EQ(lengthInUtf16("abc"), 3U);
  EXPECT_EQ(lengthInUtf16("h\xC3\xB6st \xE2\x82\xAC"), 6U);
  EXPECT_EQ(lengthInUtf16("\xF0\x9F\x98\x80"), 2U);
}

TEST(RequireFileName, GivesTheNameBehindTheSeparator) {
  EXPECT_EQ(requireFileName("C:\\Veltrin", "\\PingTest.txt"), "PingTest.txt");
}

TEST(RequireFileName, FailsAsABadFileName) {
  try {
    requireFileName("C:\\Veltrin", "\\a?.txt");
    FAIL() << "accepted";
  } catch (const StatementFailed& failure) {
    EXPECT_EQ(failure.number(), 52);
  }
}

TEST(RequireFileName, FailsWithoutASeparator) {
  EXPECT_THROW(requireFileName("C:\\Veltrin", "PingTest.txt"), StatementFailed);
  EXPECT_THROW(requireFileName("C:\\Veltrin", ""), StatementFailed);
}

TEST(RequireFileName, FailsForANameThatLeavesTheFolder) {
  EXPECT_THROW(requireFileName("C:\\Veltrin", "\\..\\PingTest.txt"), StatementFailed);
  EXPECT_THROW(requireFileName("C:\\Veltrin", "\\.."), StatementFailed);
  EXPECT_THROW(requireFileName("C:\\Veltrin", "\\/etc/passwd"), StatementFailed);
}

TEST(RequireFileName, TakesAPathOfAtMost259Characters) {
  const std::string folder(100, 'f');
  const std::string name = "\\" + std::string(158, 'a');
  EXPECT_EQ(requireFileName(folder, name).size(), 158U);
  EXPECT_THROW(requireFileName(folder, name + "a"), StatementFailed);
}

}  // namespace
}  // namespace veltrin
