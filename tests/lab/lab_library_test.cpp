// SPDX-License-Identifier: GPL-3.0-or-later
// The scenarios that come with the lab, in virtual time, asked as tools that walk
// paths ask.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "lab/internet.h"
#include "lab/library.h"
#include "lab_packets.h"

namespace veltrin::lab {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::StartsWith;

constexpr std::string_view kTarget = "203.0.113.80";

Internet open(std::string_view name) {
  return Internet(loadScenario(findScenario(LAB_SCENARIOS, name)));
}

bool answers(Internet& internet, Time now, int hop) {
  return !internet.receive(now, makeEcho(kTarget, static_cast<std::uint8_t>(hop))).empty();
}

// How many of `rounds` echoes to each of the first 15 hops are lost, one each
// 10 ms, hop after hop by turns.
std::vector<int> lostInRounds(Internet& internet, int rounds) {
  std::vector<int> lost(15);
  Time now{};
  for (int round = 0; round < rounds; ++round) {
    for (int hop = 1; hop <= 15; ++hop) {
      lost[static_cast<std::size_t>(hop) - 1] += answers(internet, now, hop) ? 0 : 1;
      now += milliseconds(10);
    }
  }
  return lost;
}

// The first 15 hops as a text: "1" where one answers, "." where none does.
std::string hopsThatAnswer(Internet& internet, Time now) {
  std::string text;
  for (int hop = 1; hop <= 15; ++hop) text += answers(internet, now, hop) ? '1' : '.';
  return text;
}

TEST(LabLibrary, EveryNodeUsesAddressesForDocumentationAlone) {
  for (const std::string& name : listScenarios(LAB_SCENARIOS)) {
    for (const Node& node : loadScenario(findScenario(LAB_SCENARIOS, name)).nodes) {
      for (const IpAddress& address : node.addresses) {
        EXPECT_THAT(address.text(),
                    testing::AnyOf(StartsWith("192.0.2."), StartsWith("198.51.100."),
                                   StartsWith("203.0.113."), StartsWith("2001:db8:")))
            << name;
      }
    }
  }
}

TEST(LabLibrary, CleanPathAnswersEverywhere) {
  Internet internet = open("clean-15");
  EXPECT_THAT(lostInRounds(internet, 100), ElementsAreArray(std::vector<int>(15, 0)));
}

TEST(LabLibrary, SilentPathHasThreeGaps) {
  Internet internet = open("silent-15");
  EXPECT_EQ(hopsThatAnswer(internet, Time::zero()), "11.1111..111111");
}

TEST(LabLibrary, LossyPathLosesThirteenOfAHundredBehindItsLinkAndThreeMoreAtOneRouter) {
  Internet internet = open("lossy-middle");
  lostInRounds(internet, 3);
  EXPECT_THAT(lostInRounds(internet, 100),
              ElementsAre(0, 0, 0, 0, 0, 0, 13, 13, 16, 13, 13, 13, 13, 13, 13));
}

TEST(LabLibrary, DyingPathEndsBehindHopSevenForFifteenSeconds) {
  Internet internet = open("dies-and-returns");
  EXPECT_EQ(hopsThatAnswer(internet, seconds(0)), "111111111111111");
  EXPECT_EQ(hopsThatAnswer(internet, milliseconds(19'999)), "111111111111111");
  EXPECT_EQ(hopsThatAnswer(internet, seconds(20)), "1111111........");
  EXPECT_EQ(hopsThatAnswer(internet, milliseconds(34'999)), "1111111........");
  EXPECT_EQ(hopsThatAnswer(internet, seconds(35)), "111111111111111");
}

TEST(LabLibrary, LimitedHopsAnswerThreeQuickEchoesAsFarAsTheirLimitGoes) {
  Internet internet = open("rate-limited");
  EXPECT_EQ(hopsThatAnswer(internet, seconds(0)), "111111111111111");
  EXPECT_EQ(hopsThatAnswer(internet, seconds(0)), "111.111111.1111");
  EXPECT_EQ(hopsThatAnswer(internet, seconds(0)), "111.11.111.1111");
}

TEST(LabLibrary, TargetOfTwoOutagesIsAwayForFourSecondsAndForTwelve) {
  Internet internet = open("two-outages");
  const auto there = [&](Time now) { return answers(internet, now, 64); };
  EXPECT_TRUE(there(seconds(0)));
  EXPECT_TRUE(there(milliseconds(9'999)));
  EXPECT_FALSE(there(seconds(10)));
  EXPECT_FALSE(there(milliseconds(13'999)));
  EXPECT_TRUE(there(seconds(14)));
  EXPECT_TRUE(there(milliseconds(23'999)));
  EXPECT_FALSE(there(seconds(24)));
  EXPECT_TRUE(answers(internet, seconds(25), 1));
  EXPECT_TRUE(answers(internet, seconds(25), 2));
  EXPECT_FALSE(there(milliseconds(35'999)));
  EXPECT_TRUE(there(seconds(36)));
}

TEST(LabLibrary, JitteryPathIsUnsteadyAtItsThirdHopAlone) {
  Internet internet = open("jittery-hop");
  std::vector<Time> spreads;
  Time now{};
  for (std::uint8_t hop = 1; hop <= 5; ++hop) {
    Time shortest = Time::max();
    Time longest{};
    for (int echo = 0; echo < 200; ++echo, now += milliseconds(10)) {
      const auto replies = internet.receive(now, makeEcho(kTarget, hop));
      ASSERT_EQ(replies.size(), 1U);
      shortest = std::min(shortest, replies[0].due - now);
      longest = std::max(longest, replies[0].due - now);
    }
    spreads.push_back(longest - shortest);
  }
  const Time none{};
  EXPECT_THAT(spreads, ElementsAre(none, none, testing::Gt(milliseconds(60)), none, none));
}

}  // namespace
}  // namespace veltrin::lab
