// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers on a desktop whose language writes a comma before decimals: the toolkit sets the
// locale of the whole program by it.
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>

#include "support/german_language.h"
#include "text/loose.h"
#include "text/numbers.h"

namespace veltrin {
namespace {

class DecimalComma : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { german_ = std::make_unique<GermanLanguage>(); }
  static void TearDownTestSuite() { german_.reset(); }

  void SetUp() override {
    if (!german_->isMade()) GTEST_SKIP() << GermanLanguage::kMissing;
    setenv("LOCPATH", german_->folder().c_str(), 1);
    ASSERT_NE(std::setlocale(LC_ALL, GermanLanguage::kName), nullptr);
    char text[8];
    std::snprintf(text, sizeof text, "%.1f", 0.5);
    ASSERT_STREQ(text, "0,5");
  }

  void TearDown() override {
    std::setlocale(LC_ALL, "C");
    unsetenv("LOCPATH");
  }

 private:
  static inline std::unique_ptr<GermanLanguage> german_;
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
