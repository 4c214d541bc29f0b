// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/accounts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> textsOf(const std::string& users, const std::string& groups) {
  const TemporaryTree tree;
  tree.put("/etc/passwd", users);
  tree.put("/etc/group", groups);
  std::vector<std::string> texts;
  for (const AccountFacts& account : localAccounts(tree.files())) {
    texts.push_back((account.group ? "group " : "user ") + account.name + ": " +
                    account.description);
  }
  return texts;
}

TEST(Accounts, AreTheUsersAndThenTheGroups) {
  EXPECT_THAT(textsOf("root:x:0:0:root:/root:/bin/bash\nsync:x:4:65534::/bin:/bin/sync\n",
                      "users:x:100:anna,ben\nroot:x:0:\n"),
              ElementsAre("user root: root", "user sync: ", "group users: ", "group root: "));
}

TEST(Accounts, AreDescribedByTheirFullNamesAlone) {
  EXPECT_THAT(textsOf("anna:x:1000:1000:Anna Example,Room 7,555 0100:/home/anna:/bin/sh\n", ""),
              ElementsAre("user anna: Anna Example"));
}

TEST(Accounts, OfGroupsHaveNoDescription) {
  EXPECT_THAT(textsOf("", "staff:x:50:a:b:c\n"), ElementsAre("group staff: "));
}

TEST(Accounts, AreNotTheLinesThatStandForOthers) {
  EXPECT_THAT(textsOf("+::0:0:::\n+@staff:x:1:1:::\n-anna:x:1:1:::\n#old:x:7:7:::\n", "+:::\n"),
              ElementsAre());
}

TEST(Accounts, AreNotTheLinesThatAreBroken) {
  EXPECT_THAT(textsOf("\n:x:1:1:::\nalone\nno:number\nword:x:one:1:::\nminus:x:-1:1:::\n", "::\n"),
              ElementsAre());
}

TEST(Accounts, AreReadFromFilesWithTheLineEndsOfWindows) {
  EXPECT_THAT(textsOf("anna:x:1:1:Anna\r\n", "staff:x:50:\r\n"),
              ElementsAre("user anna: Anna", "group staff: "));
}

TEST(Accounts, ShowBytesThatAreNoTextAsQuestionMarks) {
  EXPECT_THAT(textsOf("j\xF6rg:x:1:1:J\xF6rg \x1B[1m:/:\n", ""),
              ElementsAre("user j?rg: J?rg  [1m"));
}

TEST(Accounts, OfAGroupWithMoreMembersThanFitAPieceAreOne) {
  std::string members;
  for (int i = 0; i < 30000; ++i) {
    members += "member" + std::to_string(i) + ",";
  }
  EXPECT_THAT(textsOf("", "all:x:7:" + members + "\nnext:x:8:\n"),
              ElementsAre("group all: ", "group next: "));
}

TEST(Accounts, AreAllOfTwentyThousand) {
  std::string users;
  for (int i = 0; i < 20000; ++i) {
    users += "user" + std::to_string(i) + ":x:" + std::to_string(i) + ":1:User:/:/bin/sh\n";
  }
  const auto texts = textsOf(users, "");
  ASSERT_EQ(texts.size(), 20000U);
  EXPECT_EQ(texts.back(), "user user19999: User");
}

TEST(Accounts, AreNoneWithoutTheirFilesAndInEmptyOnes) {
  EXPECT_TRUE(localAccounts(TemporaryTree().files()).empty());
  EXPECT_THAT(textsOf("", ""), ElementsAre());
}

}  // namespace
}  // namespace veltrin
