// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/machine/journal_file.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class WmiEvents : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!canMakeJournals()) {
      GTEST_SKIP() << "systemd-journal-remote is not installed";
    }
  }

  std::vector<std::string> texts() const {
    return wmiTexts(tree_.files(), machine_, "Win32_NTLogEvent");
  }

  TemporaryTree tree_;
  FakeMachine machine_;
};

TEST_F(WmiEvents, AreTheJournalsEntriesFromTheNewestOn) {
  machine_.offset = 60;
  ASSERT_TRUE(makeJournal(
      tree_, {"MESSAGE=Out of paper\nPRIORITY=4\nSYSLOG_FACILITY=6\nSYSLOG_IDENTIFIER=lpd\n",
              "CODE_LINE=7\n"}));
  EXPECT_THAT(
      texts(),
      ElementsAre("Category=null;EventCode=null;EventType=null;Message=null;SourceName=null;"
                  "TimeGenerated=20260202112113.123456+060;Type=null;",
                  "Category=6;EventCode=null;EventType=2;Message=Out of paper;SourceName=lpd;"
                  "TimeGenerated=20260202112112.123456+060;Type=Warning;"));
}

TEST_F(WmiEvents, TellTheirZoneWestOfGreenwich) {
  machine_.offset = -300;
  ASSERT_TRUE(makeJournal(tree_, {"MESSAGE=a\n"}));
  EXPECT_THAT(texts(), ElementsAre(HasSubstr("TimeGenerated=20260202052112.123456-300;")));
}

TEST_F(WmiEvents, AreOfTheTypeOfTheirPriority) {
  std::vector<std::string> entries;
  entries.reserve(8);
  for (int priority = 0; priority < 8; ++priority) {
    entries.push_back("MESSAGE=a\nPRIORITY=" + std::to_string(priority) + "\n");
  }
  ASSERT_TRUE(makeJournal(tree_, entries));
  std::vector<std::string> types;
  for (const WmiObject& event : wmiAnswer(tree_.files(), machine_, "Win32_NTLogEvent")) {
    types.push_back(event.value("EventType").text() + " " + event.value("Type").text());
  }
  EXPECT_THAT(types, ElementsAre("3 Information", "3 Information", "3 Information", "2 Warning",
                                 "1 Error", "1 Error", "1 Error", "1 Error"));
}

TEST_F(WmiEvents, OfTheKernelHaveACategoryToo) {
  ASSERT_TRUE(makeJournal(tree_, {"MESSAGE=a\nSYSLOG_FACILITY=0\n"}));
  EXPECT_THAT(texts(), ElementsAre(HasSubstr("Category=0;")));
}

TEST_F(WmiEvents, AreNoneWithoutAJournal) { EXPECT_THAT(texts(), ElementsAre()); }

}  // namespace
}  // namespace veltrin
