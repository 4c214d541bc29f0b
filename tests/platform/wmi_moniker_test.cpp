// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/wmi_moniker.h"

#include <gtest/gtest.h>

namespace veltrin {
namespace {

TEST(WmiMonikerTest, TellsTheMachineAndTheNamespace) {
  const auto moniker = wmiMonikerOf("winmgmts:\\\\KITCHEN\\root\\cimv2");
  ASSERT_TRUE(moniker);
  EXPECT_EQ(moniker->machine, "KITCHEN");
  EXPECT_EQ(moniker->spaceName, "root\\cimv2");
}

TEST(WmiMonikerTest, ImpersonatesWithoutAWordAboutIt) {
  EXPECT_EQ(wmiMonikerOf("winmgmts:\\\\KITCHEN\\root\\cimv2")->impersonationLevel, 3U);
}

TEST(WmiMonikerTest, TakesSettingsAndBlanks) {
  const auto moniker =
      wmiMonikerOf("winmgmts: {impersonationLevel=impersonate}!\\\\.\\root\\cimv2");
  ASSERT_TRUE(moniker);
  EXPECT_EQ(moniker->impersonationLevel, 3U);
  EXPECT_EQ(moniker->machine, ".");
  EXPECT_EQ(moniker->spaceName, "root\\cimv2");
}

TEST(WmiMonikerTest, KnowsEachLevelByItsWord) {
  const auto levelOf = [](const std::string& word) {
    return wmiMonikerOf("winmgmts:{impersonationLevel=" + word + "}!\\\\.\\root")
        ->impersonationLevel;
  };
  EXPECT_EQ(levelOf("anonymous"), 1U);
  EXPECT_EQ(levelOf("identify"), 2U);
  EXPECT_EQ(levelOf("impersonate"), 3U);
  EXPECT_EQ(levelOf("delegate"), 4U);
}

TEST(WmiMonikerTest, IgnoresTheCaseOfItsWordsAndKeepsThatOfNames) {
  const auto moniker = wmiMonikerOf("WinMgmts:{IMPERSONATIONLEVEL=Identify}!\\\\Desk\\ROOT\\CimV2");
  ASSERT_TRUE(moniker);
  EXPECT_EQ(moniker->impersonationLevel, 2U);
  EXPECT_EQ(moniker->machine, "Desk");
  EXPECT_EQ(moniker->spaceName, "ROOT\\CimV2");
}

TEST(WmiMonikerTest, TakesANamespaceOfOneStepOrMany) {
  EXPECT_EQ(wmiMonikerOf("winmgmts:\\\\.\\root")->spaceName, "root");
  EXPECT_EQ(wmiMonikerOf("winmgmts:\\\\.\\root\\a\\b\\c")->spaceName, "root\\a\\b\\c");
}

class NoWmiMonikerTest : public testing::TestWithParam<const char*> {};

TEST_P(NoWmiMonikerTest, IsRefused) { EXPECT_FALSE(wmiMonikerOf(GetParam())) << GetParam(); }

INSTANTIATE_TEST_SUITE_P(
    Texts, NoWmiMonikerTest,
    testing::Values("", "winmgmts", "winmgmts:", "winmgmts: ", "winmgmts:root\\cimv2",
                    "winmgmts:\\KITCHEN\\root\\cimv2", "winmgmts:\\\\KITCHEN",
                    "winmgmts:\\\\KITCHEN\\", "winmgmts:\\\\KITCHEN\\root\\",
                    "winmgmts:\\\\KITCHEN\\root\\\\cimv2", "winmgmts:\\\\\\root\\cimv2",
                    "winmgmts:\\\\.\\root\\cimv2:Win32_Processor", "winmgmts://./root/cimv2",
                    "winmgmts:\\\\KIT/CHEN\\root", "winmgmts:\\\\KIT\nCHEN\\root",
                    " winmgmts:\\\\.\\root\\cimv2", "\\\\.\\root\\cimv2",
                    "winmgmts:{impersonationLevel=impersonate}\\\\.\\root\\cimv2",
                    "winmgmts:{impersonationLevel=impersonate!\\\\.\\root\\cimv2",
                    "winmgmts:{impersonationLevel=nobody}!\\\\.\\root\\cimv2",
                    "winmgmts:{impersonationLevel=}!\\\\.\\root\\cimv2",
                    "winmgmts:{}!\\\\.\\root\\cimv2", "winmgmts:!\\\\.\\root\\cimv2"));

}  // namespace
}  // namespace veltrin
