// SPDX-License-Identifier: GPL-3.0-or-later
// Paths of routers, in virtual time: what happens to packets on the way out, and
// the answers that come from there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#include "lab/internet.h"
#include "lab_packets.h"

namespace veltrin::lab {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::AllOf;
using testing::ElementsAre;
using testing::Gt;
using testing::IsEmpty;
using testing::Lt;
using testing::SizeIs;

constexpr std::string_view kTarget = "203.0.113.80";
constexpr std::string_view kTargetV6 = "2001:db8:0:80::1";

// Three routers and a host, each with keys of its own, and what follows them.
struct Keys {
  std::string first{};
  std::string second{};
  std::string third{};
  std::string host{};
  std::string end{};
};

Internet pathWith(const Keys& keys) {
  return Internet(readScenario(
      "[internet]\nmachine = 192.0.2.2/24\ndns = 198.51.100.53\n"
      "[router one]\naddress = 198.51.100.1, 2001:db8:0:1::1\ndelay = 10 ms\n" +
      keys.first + "[router two]\naddress = 198.51.100.2, 2001:db8:0:2::1\ndelay = 20 ms\n" +
      keys.second + "[router three]\naddress = 198.51.100.3, 2001:db8:0:3::1\ndelay = 30 ms\n" +
      keys.third +
      "[host target]\naddress = 203.0.113.80, 2001:db8:0:80::1\ndelay = 40 ms\n"
      "via = one, two, three\n" +
      keys.host + keys.end));
}

// Milliseconds to the first answer to an echo with a hop limit; -1 when none comes.
double answerTime(Internet& internet, std::uint8_t hopLimit, Time now,
                  std::string_view to = kTarget) {
  const auto replies = internet.receive(now, makeEcho(to, hopLimit));
  return replies.empty() ? -1 : static_cast<double>((replies[0].due - now).count()) / 1e6;
}

// Which of `count` echoes, one every 100 ms, bring no answer; the first is 1.
std::vector<int> lostOf(Internet& internet, std::uint8_t hopLimit, int count) {
  std::vector<int> lost;
  for (int number = 1; number <= count; ++number) {
    if (answerTime(internet, hopLimit, milliseconds(100) * number) < 0) lost.push_back(number);
  }
  return lost;
}

// The answer to a packet, as "SOURCE TYPE/CODE LIMIT"; "" when none comes.
std::string answerText(Internet& internet, const Packet& packet, Time now = Time::zero()) {
  const auto replies = internet.receive(now, packet);
  if (replies.empty()) return "";
  const auto reply = readIp(replies[0].bytes);
  return reply->source.text() + ' ' + std::to_string(reply->payload()[0]) + '/' +
         std::to_string(reply->payload()[1]) + ' ' + std::to_string(reply->hopsLeft);
}

TEST(LabPath, EachHopAnswersAfterItsOwnDelayAndNotTheSum) {
  Internet internet = pathWith({});
  EXPECT_EQ(answerTime(internet, 1, Time::zero()), 10);
  EXPECT_EQ(answerTime(internet, 2, Time::zero()), 20);
  EXPECT_EQ(answerTime(internet, 3, Time::zero()), 30);
  EXPECT_EQ(answerTime(internet, 4, Time::zero()), 40);
}

TEST(LabPath, DelayOfALinkAddsForAllBehindIt) {
  Internet internet = pathWith({.second = "link-delay = 5 ms\n", .host = "link-delay = 1 ms\n"});
  EXPECT_EQ(answerTime(internet, 1, Time::zero()), 10);
  EXPECT_EQ(answerTime(internet, 2, Time::zero()), 25);
  EXPECT_EQ(answerTime(internet, 3, Time::zero()), 35);
  EXPECT_EQ(answerTime(internet, 64, Time::zero()), 46);
}

TEST(LabPath, RouterBehindALinkIsReachedOverItByItsOwnAddressToo) {
  Internet internet = pathWith({.second = "link-delay = 5 ms\n"});
  EXPECT_EQ(answerTime(internet, 64, Time::zero(), "198.51.100.1"), 10);
  EXPECT_EQ(answerTime(internet, 64, Time::zero(), "198.51.100.3"), 35);
}

TEST(LabPath, PatternOfALinkLosesWhatPassesItAndNothingBefore) {
  Internet internet = pathWith({.second = "link-loss-pattern = every 4th\n"});
  EXPECT_THAT(lostOf(internet, 1, 9), IsEmpty());
  EXPECT_THAT(lostOf(internet, 2, 9), ElementsAre(4, 8));
  EXPECT_THAT(lostOf(internet, 3, 9), ElementsAre(4, 8));
  EXPECT_THAT(lostOf(internet, 64, 9), ElementsAre(4, 8));
}

TEST(LabPath, PatternLosesAlikeWhenHopsAreAskedByTurns) {
  Internet internet = pathWith({.first = "link-loss-pattern = every 4th\n"});
  std::map<int, int> lost;
  for (int round = 0; round < 100; ++round) {
    for (int hop = 1; hop <= 4; ++hop) {
      const auto limit = static_cast<std::uint8_t>(hop);
      if (answerTime(internet, limit, seconds(round)) < 0) ++lost[hop];
    }
  }
  EXPECT_EQ(lost, (std::map<int, int>{{1, 25}, {2, 25}, {3, 25}, {4, 25}}));
}

TEST(LabPath, ThirteenOfAHundredAreSpreadOverTheHundred) {
  Internet internet = pathWith({.first = "link-loss-pattern = 13 of 100\n"});
  EXPECT_THAT(lostOf(internet, 1, 100),
              ElementsAre(8, 16, 24, 31, 39, 47, 54, 62, 70, 77, 85, 93, 100));
}

TEST(LabPath, LossOfARouterIsThatOfItsOwnAnswersAlone) {
  Internet internet = pathWith({.second = "loss-pattern = every 3rd\n"});
  EXPECT_THAT(lostOf(internet, 2, 7), ElementsAre(3, 6));
  EXPECT_THAT(lostOf(internet, 3, 7), IsEmpty());
}

TEST(LabPath, RouterCountsOnlyWhatItsLinkLetsThrough) {
  Internet internet = pathWith(
      {.second = "link-loss-pattern = 13 of 100\n", .third = "loss-pattern = every 29th\n"});
  EXPECT_THAT(lostOf(internet, 2, 100), SizeIs(13));
  EXPECT_THAT(lostOf(internet, 3, 100), SizeIs(16));
}

TEST(LabPath, RandomLossOfALinkComesNearItsShare) {
  Internet internet = pathWith({.second = "link-loss = 25 %\n"});
  EXPECT_THAT(lostOf(internet, 3, 4000), SizeIs(AllOf(Gt(900U), Lt(1100U))));
}

TEST(LabPath, TrafficToOneHopChangesNoChanceOfAnother) {
  Internet quiet = pathWith({.second = "link-loss = 25 %\n"});
  Internet busy = pathWith({.second = "link-loss = 25 %\n"});
  lostOf(busy, 2, 17);
  EXPECT_EQ(lostOf(quiet, 3, 100), lostOf(busy, 3, 100));
}

TEST(LabPath, PatternDoublesAnAnswerAtOneMoment) {
  Internet internet = pathWith({.second = "twice = every 2nd\n"});
  EXPECT_THAT(internet.receive(Time::zero(), makeEcho(kTarget, 2)), SizeIs(1));
  const auto replies = internet.receive(seconds(1), makeEcho(kTarget, 2));
  ASSERT_THAT(replies, SizeIs(2));
  EXPECT_EQ(replies[0].due, milliseconds(1020));
  EXPECT_EQ(replies[1].due, milliseconds(1020));
  EXPECT_EQ(replies[0].bytes, replies[1].bytes);
}

TEST(LabPath, PatternDelaysAnAnswer) {
  Internet internet = pathWith({.host = "late = every 3rd by 300 ms\n"});
  std::vector<double> times;
  times.reserve(4);
  for (int number = 0; number < 4; ++number) {
    times.push_back(answerTime(internet, 64, milliseconds(100) * number));
  }
  EXPECT_THAT(times, ElementsAre(40, 40, 340, 40));
}

TEST(LabPath, RouterSendsAsManyErrorsASecondAsItsLimitSays) {
  Internet internet = pathWith({.second = "rate-limit = 2\n"});
  std::vector<Time> answered;
  for (Time now{}; now < seconds(3); now += milliseconds(100)) {
    if (answerTime(internet, 2, now) > 0) answered.push_back(now);
  }
  EXPECT_THAT(answered,
              ElementsAre(milliseconds(0), milliseconds(100), milliseconds(500), milliseconds(1000),
                          milliseconds(1500), milliseconds(2000), milliseconds(2500)));
}

TEST(LabPath, LimitOfErrorsLimitsNoEchoes) {
  Internet internet = pathWith({.second = "rate-limit = 1\n"});
  for (int number = 0; number < 5; ++number) {
    EXPECT_EQ(answerTime(internet, 64, Time::zero(), "198.51.100.2"), 20) << number;
  }
}

// The flag that forbids cutting a packet into pieces.
constexpr std::size_t kDoNotCut = 0x4000;

Packet makeLong(std::size_t length, std::size_t flags, std::uint8_t ttl = 64) {
  Packet body = makeEchoBody(8, length - 28);
  putNumber(body, 2, internetChecksum(body));
  return makeV4(kMachine, kTarget, 1, body, ttl, flags);
}

TEST(LabPath, RouterTellsOfAPacketThatIsTooLong) {
  Internet internet = pathWith({.second = "mtu = 1400\n"});
  const auto replies = internet.receive(Time::zero(), makeLong(1401, kDoNotCut));
  ASSERT_THAT(replies, SizeIs(1));
  EXPECT_EQ(replies[0].due, milliseconds(20));
  const auto reply = readIp(replies[0].bytes);
  EXPECT_EQ(reply->source.text(), "198.51.100.2");
  EXPECT_THAT(reply->payload().first(2), ElementsAre(3, 4));
  EXPECT_THAT(reply->payload().subspan(4, 4), ElementsAre(0, 0, 0x05, 0x78));
  EXPECT_EQ(internetChecksum(reply->payload()), 0);
}

TEST(LabPath, RouterTellsOfAPacketOfIpv6ThatIsTooLong) {
  Internet internet = pathWith({.second = "mtu = 1280\n"});
  Packet body = makeEchoBody(128, 1400);
  putNumber(body, 2, checksumWithAddresses(kMachineV6, kTargetV6, 58, body));
  const auto replies = internet.receive(Time::zero(), makeV6(kMachineV6, kTargetV6, 58, body));
  ASSERT_THAT(replies, SizeIs(1));
  const auto reply = readIp(replies[0].bytes);
  EXPECT_EQ(reply->source.text(), "2001:db8:0:2::1");
  EXPECT_THAT(reply->payload().first(2), ElementsAre(2, 0));
  EXPECT_THAT(reply->payload().subspan(4, 4), ElementsAre(0, 0, 0x05, 0x00));
}

TEST(LabPath, PacketThatJustFitsPasses) {
  Internet internet = pathWith({.second = "mtu = 1400\n"});
  EXPECT_EQ(answerText(internet, makeLong(1400, kDoNotCut)), "203.0.113.80 0/0 61");
}

TEST(LabPath, LongPacketThatMayBeCutPasses) {
  Internet internet = pathWith({.second = "mtu = 1400\n"});
  EXPECT_EQ(answerText(internet, makeLong(1500, 0)), "203.0.113.80 0/0 61");
}

TEST(LabPath, LongPacketReachesTheRouterThatDoesNotPassItOn) {
  Internet internet = pathWith({.second = "mtu = 1400\n"});
  EXPECT_EQ(answerText(internet, makeLong(1500, kDoNotCut, 2)), "198.51.100.2 11/0 63");
}

TEST(LabPath, SilentRouterLosesLongPacketsWithoutAWord) {
  Internet internet = pathWith({.second = "mtu = 1400\nsilent = yes\n"});
  EXPECT_EQ(answerText(internet, makeLong(1500, kDoNotCut)), "");
}

TEST(LabPath, NothingGetsPastARouterBeyondWhichAllIsLost) {
  Internet internet = pathWith({.second = "beyond = lost\n"});
  EXPECT_EQ(answerText(internet, makeEcho(kTarget, 2)), "198.51.100.2 11/0 63");
  EXPECT_EQ(answerText(internet, makeEcho(kTarget, 3)), "");
  EXPECT_EQ(answerText(internet, makeEcho(kTarget)), "");
}

TEST(LabPath, RouterTellsOfAnUnreachableHost) {
  Internet internet = pathWith({.second = "beyond = host-unreachable\n"});
  EXPECT_EQ(answerText(internet, makeEcho(kTarget, 2)), "198.51.100.2 11/0 63");
  EXPECT_EQ(answerText(internet, makeEcho(kTarget, 3)), "198.51.100.2 3/1 63");
  EXPECT_EQ(answerText(internet, makeEchoV6(kTargetV6)), "2001:db8:0:2::1 1/3 63");
}

TEST(LabPath, RouterTellsOfAnUnreachableNetwork) {
  Internet internet = pathWith({.second = "beyond = net-unreachable\n"});
  EXPECT_EQ(answerText(internet, makeEcho(kTarget)), "198.51.100.2 3/0 63");
  EXPECT_EQ(answerText(internet, makeEchoV6(kTargetV6)), "2001:db8:0:2::1 1/0 63");
}

TEST(LabPath, RoutersOfOneHopTakeTurnsForEachHopLimitByItself) {
  Internet internet(
      readScenario("[internet]\nmachine = 192.0.2.2/24\ndns = 198.51.100.53\n"
                   "[router a]\naddress = 198.51.100.1\n[router b]\naddress = 198.51.100.2\n"
                   "[router c]\naddress = 198.51.100.3\n[router d]\naddress = 198.51.100.4\n"
                   "[host target]\naddress = 203.0.113.80\nvia = a | b, c | d\n"));
  std::vector<std::string> answers;
  for (int round = 0; round < 3; ++round) {
    for (const std::uint8_t limit : {1, 2}) {
      answers.push_back(answerText(internet, makeEcho(kTarget, limit)));
    }
  }
  EXPECT_THAT(answers,
              ElementsAre("198.51.100.1 11/0 64", "198.51.100.3 11/0 63", "198.51.100.2 11/0 64",
                          "198.51.100.4 11/0 63", "198.51.100.1 11/0 64", "198.51.100.3 11/0 63"));
}

TEST(LabPath, ChangesCountFromTheFirstPacketToANode) {
  Internet internet = pathWith({.end = "[at 20 s two]\nbeyond = lost\ndelay = 25 ms\n"
                                       "[at 35 s two]\nbeyond = passes\n"});
  internet.receive(seconds(50), makeUdp("198.51.100.53", 53, makeQuestion("target", 1)));
  EXPECT_EQ(answerTime(internet, 64, seconds(100)), 40);
  EXPECT_EQ(answerTime(internet, 2, seconds(120) - Time(1)), 20);
  EXPECT_EQ(answerTime(internet, 64, seconds(120)), -1);
  EXPECT_EQ(answerTime(internet, 2, seconds(134)), 25);
  EXPECT_EQ(answerTime(internet, 64, seconds(135)), 40);
  EXPECT_EQ(answerTime(internet, 2, seconds(135)), 25);
}

TEST(LabPath, HostThirtyThreeHopsAwayIsOutOfReachOfThirty) {
  std::string text = "[internet]\nmachine = 192.0.2.2/24\ndns = 198.51.100.53\n";
  std::string via;
  for (int hop = 1; hop <= 32; ++hop) {
    const std::string number = std::to_string(hop);
    text.append("[router r").append(number).append("]\naddress = 198.51.100.");
    text.append(number).append("\n");
    via.append(hop == 1 ? "r" : ", r").append(number);
  }
  Internet internet(
      readScenario(text + "[host target]\naddress = 203.0.113.80\nvia = " + via + '\n'));
  EXPECT_EQ(answerText(internet, makeEcho(kTarget, 30)), "198.51.100.30 11/0 35");
  EXPECT_EQ(answerText(internet, makeEcho(kTarget, 33)), "203.0.113.80 0/0 32");
}

}  // namespace
}  // namespace veltrin::lab
