// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "platform/linux/linux_wmi.h"
#include "tests/machine/fake_machine.h"

namespace veltrin {
namespace {

class LinuxWmiTest : public ::testing::Test {
 protected:
  LinuxWmiTest() { machine_->kernelFacts.host = "desk.example.org"; }

  // The number of objects of a query; throws as the service does.
  int count(const std::string& moniker, const std::string& query) {
    const auto objects = wmi_.connect(moniker)->ExecQuery(query, kWmiForwardOnly);
    int count = 0;
    while (objects->next()) ++count;
    return count;
  }

  std::shared_ptr<FakeMachine> machine_ = std::make_shared<FakeMachine>();
  LinuxWmi wmi_{{FileTree("/nowhere"), machine_, nullptr}};
};

constexpr const char* kHere = "winmgmts:\\\\.\\root\\cimv2";
constexpr const char* kAnyQuery = "Select * from Win32_Keyboard";

TEST_F(LinuxWmiTest, AnswersForThisMachineByItsNamesInAnyCase) {
  for (const char* name : {".", "localhost", "DESK", "desk.example.org", "Desk"}) {
    EXPECT_EQ(count("winmgmts:\\\\" + std::string(name) + "\\root\\cimv2", kAnyQuery), 0) << name;
  }
}

TEST_F(LinuxWmiTest, TakesAMonikerThatTellsHowToAsk) {
  EXPECT_EQ(count("winmgmts: {impersonationLevel=impersonate}!\\\\.\\root\\cimv2", kAnyQuery), 0);
}

TEST_F(LinuxWmiTest, DoesNotAnswerForAnotherMachine) {
  EXPECT_THROW(wmi_.connect("winmgmts:\\\\OTHER\\root\\cimv2"), StatementFailed);
  EXPECT_THROW(wmi_.connect("winmgmts:\\\\DES\\root\\cimv2"), StatementFailed);
}

TEST_F(LinuxWmiTest, DoesNotAnswerForWhatIsNoMonikerOfItsFacts) {
  for (const char* moniker :
       {"", "winmgmts:", "winmgmts:\\\\.", "winmgmts:\\\\.\\root\\default", "\\\\.\\root\\cimv2",
        "winmgmts:{never closed\\\\.\\root\\cimv2", "winmgmts:.\\root\\cimv2"}) {
    EXPECT_THROW(wmi_.connect(moniker), StatementFailed) << moniker;
  }
}

TEST_F(LinuxWmiTest, TakesTheWordsOfAQueryInAnyCase) {
  EXPECT_EQ(count(kHere, "SELECT  * FROM win32_keyboard"), 0);
}

TEST_F(LinuxWmiTest, RefusesAQueryOfAnotherFormAtOnce) {
  const auto service = wmi_.connect(kHere);
  for (const char* query : {"", "Select * from", "Select Name from Win32_Keyboard",
                            "Select * from Win32_Keyboard where Name = 1", "Drop * from a"}) {
    EXPECT_THROW(service->ExecQuery(query, std::nullopt), StatementFailed) << query;
  }
}

TEST_F(LinuxWmiTest, FailsForAnUnknownClassWithItsFirstObject) {
  const auto objects = wmi_.connect(kHere)->ExecQuery("Select * from Win32_Nothing", 48);
  EXPECT_THROW(objects->next(), StatementFailed);
}

TEST_F(LinuxWmiTest, GivesAnswersThatOutliveTheirConnection) {
  auto objects = wmi_.connect(kHere)->ExecQuery(kAnyQuery, std::nullopt);
  EXPECT_EQ(objects->next(), std::nullopt);
}

}  // namespace
}  // namespace veltrin
