// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "lab/internet.h"
#include "lab_packets.h"

namespace veltrin::lab {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kScenario =
    "[internet]\n"
    "machine = 192.0.2.2/24\n"
    "dns = 198.51.100.53\n"
    "seed = 7\n"
    "[router gateway.example]\n"
    "address = 192.0.2.1, 2001:db8::1\n"
    "delay = 1 ms\n"
    "[router quiet.example]\n"
    "address = 198.51.100.17\n"
    "silent = yes\n"
    "[host near.example]\n"
    "address = 203.0.113.2, 2001:db8:0:2::1\n"
    "delay = 2 ms\n"
    "[host far.example]\n"
    "address = 203.0.113.80\n"
    "delay = 80 ms\n"
    "via = gateway.example, quiet.example\n"
    "[host jittery.example]\n"
    "address = 203.0.113.30\n"
    "delay = 30 ms\n"
    "jitter = 20 ms\n"
    "[host lossy.example]\n"
    "address = 203.0.113.20\n"
    "loss-pattern = every 5th\n"
    "[host unlucky.example]\n"
    "address = 203.0.113.25\n"
    "loss = 25 %\n"
    "[host dead.example]\n"
    "address = 203.0.113.99\n"
    "silent = yes\n"
    "[host hidden.example]\n"
    "address = 203.0.113.98\n"
    "nameless = yes\n";

class LabInternet : public testing::Test {
 protected:
  // Milliseconds to each answer of `count` echoes to a host; -1 for a lost one.
  static std::vector<double> echo(Internet& internet, std::string_view to, int count) {
    std::vector<double> answers;
    for (int sent = 0; sent < count; ++sent) {
      const Time now = milliseconds(1000) * sent;
      const auto reply = internet.receive(now, makeEcho(to));
      answers.push_back(reply.empty() ? -1
                                      : static_cast<double>((reply[0].due - now).count()) / 1e6);
    }
    return answers;
  }

  std::vector<TimedPacket> send(const Packet& packet, Time now = Time::zero()) {
    return internet_.receive(now, packet);
  }

  Internet internet_{readScenario(kScenario)};
};

TEST_F(LabInternet, AnswersAnEchoAfterTheDelayOfTheHost) {
  EXPECT_THAT(echo(internet_, "203.0.113.2", 3), ElementsAre(2, 2, 2));
  EXPECT_THAT(echo(internet_, "203.0.113.80", 2), ElementsAre(80, 80));
}

TEST_F(LabInternet, AnswersAnIpv6Echo) {
  const auto replies = send(makeEchoV6("2001:db8:0:2::1"), milliseconds(5));
  ASSERT_EQ(replies.size(), 1U);
  EXPECT_EQ(replies[0].due, milliseconds(7));
  EXPECT_EQ(replies[0].bytes[40], 129);
}

TEST_F(LabInternet, ReplyHasPassedTheRoutersOnTheWay) {
  const auto replies = send(makeEcho("203.0.113.80"));
  ASSERT_EQ(replies.size(), 1U);
  EXPECT_EQ(readIp(replies[0].bytes)->hopsLeft, 62);
}

TEST_F(LabInternet, JitterStaysWithinItsRangeAndUsesMostOfIt) {
  const auto answers = echo(internet_, "203.0.113.30", 1000);
  const auto [least, most] = std::minmax_element(answers.begin(), answers.end());
  EXPECT_GE(*least, 10);
  EXPECT_LT(*least, 11);
  EXPECT_GT(*most, 49);
  EXPECT_LE(*most, 50);
}

TEST_F(LabInternet, PatternLosesExactlyEveryFifthEcho) {
  EXPECT_THAT(echo(internet_, "203.0.113.20", 12),
              ElementsAre(0, 0, 0, 0, -1, 0, 0, 0, 0, -1, 0, 0));
}

TEST_F(LabInternet, LossAtRandomComesNearItsShare) {
  const auto answers = echo(internet_, "203.0.113.25", 4000);
  const auto lost = std::count(answers.begin(), answers.end(), -1);
  EXPECT_GT(lost, 900);
  EXPECT_LT(lost, 1100);
}

TEST_F(LabInternet, SameSeedGivesTheSameAnswers) {
  Internet again(readScenario(kScenario));
  EXPECT_EQ(echo(internet_, "203.0.113.30", 50), echo(again, "203.0.113.30", 50));
}

TEST_F(LabInternet, AnotherSeedGivesOtherAnswers) {
  std::string text = kScenario;
  text.replace(text.find("seed = 7"), 8, "seed = 8");
  Internet other(readScenario(text));
  EXPECT_NE(echo(internet_, "203.0.113.30", 50), echo(other, "203.0.113.30", 50));
}

TEST_F(LabInternet, TrafficToOneHostChangesNothingForAnother) {
  Internet busy(readScenario(kScenario));
  echo(busy, "203.0.113.25", 17);
  EXPECT_EQ(echo(internet_, "203.0.113.30", 50), echo(busy, "203.0.113.30", 50));
}

TEST_F(LabInternet, SilentHostAndUnknownAddressSayNothing) {
  EXPECT_THAT(send(makeEcho("203.0.113.99")), IsEmpty());
  EXPECT_THAT(send(makeEcho("203.0.113.200")), IsEmpty());
}

TEST_F(LabInternet, DamagedEchoVanishes) {
  Packet packet = makeEcho("203.0.113.2");
  packet.back() ^= 0x01;
  EXPECT_THAT(send(packet), IsEmpty());
}

TEST_F(LabInternet, RouterTellsOfAPacketThatEndsThere) {
  const auto replies = send(makeEcho("203.0.113.80", 1));
  ASSERT_EQ(replies.size(), 1U);
  EXPECT_EQ(replies[0].due, milliseconds(1));
  const auto packet = readIp(replies[0].bytes);
  EXPECT_EQ(packet->source.text(), "192.0.2.1");
  EXPECT_EQ(packet->payload()[0], 11);
}

TEST_F(LabInternet, SilentRouterSaysNothingOfAPacketThatEndsThere) {
  EXPECT_THAT(send(makeEcho("203.0.113.80", 2)), IsEmpty());
}

TEST_F(LabInternet, HostBehindASilentRouterAnswers) {
  EXPECT_EQ(send(makeEcho("203.0.113.80", 3)).size(), 1U);
}

TEST_F(LabInternet, RouterAnswersAnEchoItself) {
  const auto replies = send(makeEcho("192.0.2.1", 1));
  ASSERT_EQ(replies.size(), 1U);
  EXPECT_EQ(readIp(replies[0].bytes)->payload()[0], 0);
}

TEST_F(LabInternet, RouterSaysNothingAboutAnError) {
  const Packet about = makeEcho("203.0.113.80");
  const Packet error =
      icmpError({IcmpError::PortUnreachable}, *readIp(about), addressOf(kMachine), 1, 64);
  Packet toFar(error.begin() + 20, error.end());
  EXPECT_THAT(send(makeV4(kMachine, "203.0.113.80", 1, toFar, 1)), IsEmpty());
}

TEST_F(LabInternet, HostRefusesOtherPortsThanTheDns) {
  const auto replies = send(makeUdp("203.0.113.2", 33434, {0}));
  ASSERT_EQ(replies.size(), 1U);
  EXPECT_THAT(readIp(replies[0].bytes)->payload().first(2), ElementsAre(3, 3));
}

TEST_F(LabInternet, DnsAnswersAtOnce) {
  const auto replies =
      send(makeUdp("198.51.100.53", 53, makeQuestion("near.example", 1)), milliseconds(9));
  ASSERT_EQ(replies.size(), 1U);
  EXPECT_EQ(replies[0].due, milliseconds(9));
  EXPECT_THAT(tail(replies[0].bytes, 4), ElementsAre(203, 0, 113, 2));
}

TEST_F(LabInternet, DnsDoesNotKnowANamelessHost) {
  const auto replies = send(makeUdp("198.51.100.53", 53, makeQuestion("hidden.example", 1)));
  ASSERT_EQ(replies.size(), 1U);
  EXPECT_EQ(udpData(*readIp(replies[0].bytes))[3] & 0x0F, 3);
}

TEST_F(LabInternet, DnsLeadsNamesOfTheInternetOutsideToItsPublicHost) {
  std::string text = kScenario;
  text.replace(text.find("seed = 7"), 8, "public = near.example");
  Internet open(readScenario(text));
  const auto replies =
      open.receive(Time::zero(), makeUdp("198.51.100.53", 53, makeQuestion("www.wherever.org", 1)));
  ASSERT_EQ(replies.size(), 1U);
  EXPECT_THAT(tail(replies[0].bytes, 4), ElementsAre(203, 0, 113, 2));
}

// The pieces of one echo request with 2000 data bytes.
std::vector<Packet> makePieces(std::string_view to, std::size_t identification) {
  Packet body = makeEchoBody(8, 2000);
  putNumber(body, 2, internetChecksum(body));
  const Packet first(body.begin(), body.begin() + 1480);
  const Packet second(body.begin() + 1480, body.end());
  return {makeV4(kMachine, to, 1, first, 64, 0x2000, identification),
          makeV4(kMachine, to, 1, second, 64, 1480 / 8, identification)};
}

TEST_F(LabInternet, EchoInPiecesIsAnsweredInPiecesAtOneMoment) {
  Packet whole;
  std::vector<Time> moments;
  for (const Packet& piece : makePieces("203.0.113.30", 1)) {
    for (const TimedPacket& reply : send(piece)) {
      moments.push_back(reply.due);
      whole.insert(whole.end(), reply.bytes.begin() + 20, reply.bytes.end());
    }
  }
  ASSERT_EQ(moments.size(), 2U);
  EXPECT_EQ(moments[0], moments[1]);
  EXPECT_EQ(whole.size(), 2008U);
  EXPECT_EQ(whole[0], 0);
  EXPECT_EQ(internetChecksum(whole), 0);
}

TEST_F(LabInternet, EchoInPiecesIsLostWhole) {
  std::vector<std::size_t> answers;
  for (std::size_t request = 1; request <= 6; ++request) {
    std::size_t count = 0;
    for (const Packet& piece : makePieces("203.0.113.20", request)) count += send(piece).size();
    answers.push_back(count);
  }
  EXPECT_THAT(answers, ElementsAre(2, 2, 2, 2, 0, 2));
}

TEST_F(LabInternet, LaterPieceWithoutItsFirstVanishes) {
  EXPECT_THAT(send(makePieces("203.0.113.2", 1)[1]), IsEmpty());
}

}  // namespace
}  // namespace veltrin::lab
