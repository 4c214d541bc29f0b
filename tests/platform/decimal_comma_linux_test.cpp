// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers on a desktop whose language writes a comma before decimals: the toolkit sets the
// locale of the whole program by it. The system's own compiler of locales makes the language,
// so that it need not be installed.
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "text/loose.h"
#include "text/numbers.h"

namespace veltrin {
namespace {

class DecimalComma : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string command = "localedef -i de_DE -f UTF-8 " + folder_ + "/de_DE.UTF-8";
    std::filesystem::create_directories(folder_);
    if (std::system((command + " 2>/dev/null").c_str()) != 0) {
      GTEST_SKIP() << "the language cannot be made here: the package locales is missing";
    }
    setenv("LOCPATH", folder_.c_str(), 1);
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    char text[8];
    std::snprintf(text, sizeof text, "%.1f", 0.5);
    ASSERT_STREQ(text, "0,5");
  }

  ~DecimalComma() override {
    std::setlocale(LC_ALL, "C");
    unsetenv("LOCPATH");
    std::filesystem::remove_all(folder_);
  }

 private:
  const std::string folder_ =
      (std::filesystem::temp_directory_path() / ("veltrin-comma-" + std::to_string(getpid())))
          .string();
};

TEST_F(DecimalComma, LeavesThePointInNumbersThatAreWritten) {
  EXPECT_EQ(toText(1.5), "1.5");
  EXPECT_EQ(toText(-1e-7), "-1e-07");
  EXPECT_EQ(Format(1234.5, "#,##0.00"), "1,234.50");
  EXPECT_EQ(Format(2.675, "0.00"), "2.68");
  EXPECT_EQ(Format(0.125, "##.###"), ".125");
  EXPECT_EQ(FormatNumber(1234567), "1,234,567");
  EXPECT_EQ(Loose(0.25).text(), "0.25");
}

TEST_F(DecimalComma, LeavesThePointInNumbersThatAreRead) {
  EXPECT_EQ(Val("1.5 ms"), 1.5);
  EXPECT_EQ(Val("1,5"), 1);
  EXPECT_EQ(toNumber("1,234.5"), 1234.5);
  EXPECT_EQ(Loose("0.25").number(), 0.25);
}

}  // namespace
}  // namespace veltrin
