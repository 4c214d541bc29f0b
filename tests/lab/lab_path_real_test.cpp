// SPDX-License-Identifier: GPL-3.0-or-later
// The paths that come with the lab, walked with the system's own ping. Skipped
// with the lab's reason where it cannot run.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "lab_program.h"

namespace veltrin::lab {
namespace {

using testing::HasSubstr;
using testing::Not;

using LabPathReal = LabRunning;

// What ping says inside a scenario, with -n, which shows bare addresses.
std::string pingIn(const std::string& scenario, const std::string& arguments) {
  return runLine("\"$LAB\" " + scenario + " /usr/bin/ping -n " + arguments).text;
}

// Holds what ping says to an expected part. It does not wait for a reply that a busy machine
// makes late, so it may try three times; a wrong path says the wrong thing each time.
void expectOf(const std::string& scenario, const std::string& arguments, const char* expected) {
  std::string text;
  for (int attempt = 0; attempt < 3 && text.find(expected) == std::string::npos; ++attempt) {
    text = pingIn(scenario, arguments);
  }
  EXPECT_THAT(text, HasSubstr(expected));
}

TEST_F(LabPathReal, FifteenEchoesAtOnceFindTheFifteenHops) {
  const Outcome outcome = runLine(
      "\"$LAB\" clean-15 sh -c 'FOLDER=$(mktemp -d); for HOP in $(seq 15); do "
      "/usr/bin/ping -n -4 -c 1 -W 5 -t $HOP target.example > $FOLDER/$HOP & done; wait; "
      "for HOP in $(seq 15); do grep -iEo \"from [0-9.]+\" $FOLDER/$HOP; done; rm -r $FOLDER'");
  EXPECT_EQ(outcome.text,
            "From 192.0.2.1\nFrom 198.51.100.2\nFrom 198.51.100.3\nFrom 198.51.100.4\n"
            "From 198.51.100.5\nFrom 198.51.100.6\nFrom 198.51.100.7\nFrom 198.51.100.8\n"
            "From 198.51.100.9\nFrom 198.51.100.10\nFrom 198.51.100.11\nFrom 198.51.100.12\n"
            "From 198.51.100.13\nFrom 198.51.100.14\nfrom 203.0.113.80\n");
}

TEST_F(LabPathReal, SilentHopSaysNothingAndTheNextDoes) {
  EXPECT_THAT(pingIn("silent-15", "-c 1 -W 0.2 -t 3 target.example"), Not(HasSubstr("From")));
  EXPECT_THAT(pingIn("silent-15", "-c 1 -t 4 target.example"),
              HasSubstr("From 198.51.100.4 icmp_seq=1 Time to live exceeded"));
}

TEST_F(LabPathReal, ThirtiethHopIsTheTargetAndNotTheHostBehind) {
  EXPECT_THAT(pingIn("long-30", "-c 1 -t 30 target.example"),
              HasSubstr("64 bytes from 203.0.113.80: icmp_seq=1 ttl=35"));
  EXPECT_THAT(pingIn("long-30", "-c 1 -t 30 too-far.example"),
              HasSubstr("From 198.51.100.30 icmp_seq=1 Time to live exceeded"));
}

TEST_F(LabPathReal, LinkLosesThirteenOfAHundredAndTheRouterThreeMore) {
  const std::string words = "-q -c 100 -i 0.005 -W 0.2 ";
  expectOf("lossy-middle", words + "198.51.100.6", "100 packets transmitted, 100 received");
  expectOf("lossy-middle", words + "198.51.100.9", "100 packets transmitted, 84 received");
  expectOf("lossy-middle", words + "target.example", "100 packets transmitted, 87 received");
}

TEST_F(LabPathReal, BottleneckTellsWhatItPasses) {
  EXPECT_THAT(pingIn("mtu-1400", "-4 -c 1 -M do -s 1472 target.example"),
              HasSubstr("From 198.51.100.3 icmp_seq=1 Frag needed and DF set (mtu = 1400)"));
  EXPECT_THAT(pingIn("mtu-1400", "-4 -c 1 -M do -s 1372 target.example"),
              HasSubstr("1380 bytes from 203.0.113.80"));
  EXPECT_THAT(pingIn("mtu-1400", "-4 -c 1 -M dont -s 1472 target.example"),
              HasSubstr("1480 bytes from 203.0.113.80"));
}

TEST_F(LabPathReal, BottleneckTellsWhatItPassesOverIpv6) {
  EXPECT_THAT(pingIn("mtu-1400", "-6 -c 1 -s 1452 target.example"),
              HasSubstr("From 2001:db8:0:3::1 icmp_seq=1 Packet too big: mtu=1400"));
}

TEST_F(LabPathReal, HopsOfIpv6Answer) {
  EXPECT_THAT(pingIn("ipv6", "-c 1 -t 14 target.example"),
              HasSubstr("From 2001:db8:0:e::1 icmp_seq=1 Time exceeded: Hop limit"));
  EXPECT_THAT(pingIn("ipv6", "-c 1 -t 15 target.example"),
              HasSubstr("64 bytes from 2001:db8:0:80::1: icmp_seq=1 ttl=50"));
}

TEST_F(LabPathReal, TwoRoutersOfAHopTakeTurns) {
  const std::string text = pingIn("balanced", "-c 4 -i 0.3 -t 4 target.example");
  EXPECT_THAT(text, HasSubstr("From 198.51.100.44 icmp_seq=1"));
  EXPECT_THAT(text, HasSubstr("From 198.51.100.45 icmp_seq=2"));
  EXPECT_THAT(text, HasSubstr("From 198.51.100.44 icmp_seq=3"));
  EXPECT_THAT(text, HasSubstr("From 198.51.100.45 icmp_seq=4"));
}

TEST_F(LabPathReal, RouterTellsOfUnreachableHostAndNetwork) {
  EXPECT_THAT(pingIn("unreachable", "-4 -c 1 target.example"),
              HasSubstr("From 198.51.100.5 icmp_seq=1 Destination Host Unreachable"));
  EXPECT_THAT(pingIn("unreachable", "-4 -c 1 no-network.example"),
              HasSubstr("From 198.51.100.6 icmp_seq=1 Destination Net Unreachable"));
  EXPECT_THAT(pingIn("unreachable", "-6 -c 1 target.example"),
              HasSubstr("From 2001:db8:0:5::1 icmp_seq=1 Destination unreachable: Address "
                        "unreachable"));
}

TEST_F(LabPathReal, ThirdReplyComesTwiceAndTheFifthBehindTheSixth) {
  const std::string text = pingIn("odd-replies", "-c 7 -i 0.06 target.example");
  EXPECT_THAT(text, HasSubstr("(DUP!)"));
  ASSERT_THAT(text, HasSubstr("icmp_seq=5 "));
  EXPECT_LT(text.find("icmp_seq=6 "), text.find("icmp_seq=5 "));
}

TEST_F(LabPathReal, LimitedRouterTellsOnceOfManyPackets) {
  expectOf("rate-limited", "-q -c 5 -i 0.01 -W 0.2 -t 4 target.example",
           "5 packets transmitted, 0 received, +1 errors");
}

}  // namespace
}  // namespace veltrin::lab
