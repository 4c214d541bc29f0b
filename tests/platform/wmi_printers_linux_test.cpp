// SPDX-License-Identifier: GPL-3.0-or-later
// Printers of a system that is made up.
#include <gtest/gtest.h>

#include "platform/linux/wmi_classes.h"
#include "tests/machine/fake_machine.h"

namespace veltrin {
namespace {

WmiAnswer answerOf(const std::vector<PrinterFacts>& printers) {
  return win32Printer(
      {FileTree("/nowhere"), std::make_shared<FakeMachine>(), [printers] { return printers; }});
}

TEST(WmiPrinters, AreNamedAndDescribedInTheSystemsOrder) {
  const WmiAnswer answer = answerOf({{"Office", "The one by the window"}, {"Attic", "Spare"}});
  ASSERT_EQ(answer.size(), 2U);
  EXPECT_EQ(answer[0].value("Name").text(), "Office");
  EXPECT_EQ(answer[0].value("Description").text(), "The one by the window");
  EXPECT_EQ(answer[1].value("Name").text(), "Attic");
  EXPECT_EQ(answer[1].value("Description").text(), "Spare");
}

TEST(WmiPrinters, WithoutADescriptionItIsNull) {
  const WmiAnswer answer = answerOf({{"Office", ""}, {"Attic", " \n"}});
  ASSERT_EQ(answer.size(), 2U);
  EXPECT_TRUE(answer[0].value("Description").isNull());
  EXPECT_TRUE(answer[1].value("Description").isNull());
}

TEST(WmiPrinters, AreMadePrintable) {
  const WmiAnswer answer = answerOf({{"Bad\xFFName", "Two\nlines"}});
  ASSERT_EQ(answer.size(), 1U);
  EXPECT_EQ(answer[0].value("Name").text(), "Bad?Name");
  EXPECT_EQ(answer[0].value("Description").text(), "Two lines");
}

TEST(WmiPrinters, AreNoneWhereNobodyTellsThem) {
  EXPECT_TRUE(answerOf({}).empty());
  EXPECT_TRUE(
      win32Printer({FileTree("/nowhere"), std::make_shared<FakeMachine>(), nullptr}).empty());
}

}  // namespace
}  // namespace veltrin
