// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;

class WmiAccounts : public ::testing::Test {
 protected:
  WmiAccounts() { machine_.kernelFacts.host = "mypc"; }

  std::vector<std::string> texts() const {
    return wmiTexts(tree_.files(), machine_, "Win32_Account");
  }

  TemporaryTree tree_;
  FakeMachine machine_;
};

TEST_F(WmiAccounts, AreUsersAndGroupsOfTheMachine) {
  tree_.put("/etc/passwd",
            "anna:x:1000:1000:Anna Example,Room 7:/home/anna:/bin/sh\nbin:x:2:2::/bin:/bin/no\n");
  tree_.put("/etc/group", "staff:x:50:anna\n");
  EXPECT_THAT(texts(),
              ElementsAre("Caption=MYPC\\anna;Description=Anna Example;Domain=MYPC;"
                          "LocalAccount=True;Name=anna;SID=null;SIDType=1;",
                          "Caption=MYPC\\bin;Description=null;Domain=MYPC;LocalAccount=True;"
                          "Name=bin;SID=null;SIDType=1;",
                          "Caption=MYPC\\staff;Description=null;Domain=MYPC;LocalAccount=True;"
                          "Name=staff;SID=null;SIDType=2;"));
}

TEST_F(WmiAccounts, HaveNoDomainOnAMachineWithoutAName) {
  machine_.kernelFacts.host = "";
  tree_.put("/etc/passwd", "a:x:1:1:::\n");
  EXPECT_THAT(texts(), ElementsAre("Caption=\\a;Description=null;Domain=null;LocalAccount=True;"
                                   "Name=a;SID=null;SIDType=1;"));
}

TEST_F(WmiAccounts, AreNoneWithoutTheirFiles) { EXPECT_THAT(texts(), ElementsAre()); }

}  // namespace
}  // namespace veltrin
