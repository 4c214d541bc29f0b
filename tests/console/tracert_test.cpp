// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/tracert.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "route_run.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

using TracertRun = RouteRun<Tracert>;

TEST_F(TracertRun, PrintsThePathToANamedHost) {
  network_.names["www.example.net"] = "192.0.2.7";
  network_.reverseNames["203.0.113.1"] = "gateway.example";
  network_.makePath(4, 4'000);
  network_.hops[1] = {passing("203.0.113.1", 999)};
  network_.hops[3] = {};
  network_.echoes[{2, 1}] = {};

  EXPECT_EQ(run({"www.example.net"}), 0);
  EXPECT_EQ(output_.text(),
            "\r\n"
            "Tracing route to www.example.net [192.0.2.7]\r\n"
            "over a maximum of 30 hops:\r\n"
            "\r\n"
            "  1    <1 ms    <1 ms    <1 ms  gateway.example [203.0.113.1] \r\n"
            "  2     8 ms     *        8 ms  203.0.113.2 \r\n"
            "  3     *        *        *     Request timed out.\r\n"
            "  4    16 ms    16 ms    16 ms  192.0.2.7 \r\n"
            "\r\n"
            "Trace complete.\r\n");
}

TEST_F(TracertRun, PrintsANumericDestinationWithoutANameOnOneLine) {
  network_.makePath(1, 4'000);
  EXPECT_EQ(textOf({"192.0.2.7"}),
            "\r\n"
            "Tracing route to 192.0.2.7 over a maximum of 30 hops\r\n"
            "\r\n"
            "  1     4 ms     4 ms     4 ms  192.0.2.7 \r\n"
            "\r\n"
            "Trace complete.\r\n");
}

TEST_F(TracertRun, PrintsTheNameOfANumericDestination) {
  network_.reverseNames["192.0.2.7"] = "www.example.net";
  network_.makePath(1, 4'000);
  EXPECT_THAT(textOf({"192.0.2.7", "-h", "9"}),
              StartsWith("\r\n"
                         "Tracing route to www.example.net [192.0.2.7]\r\n"
                         "over a maximum of 9 hops:\r\n"
                         "\r\n"
                         "  1     4 ms     4 ms     4 ms  www.example.net [192.0.2.7] \r\n"));
}

TEST_F(TracertRun, WithoutNamesLooksNoneUp) {
  network_.reverseNames["192.0.2.7"] = "www.example.net";
  network_.makePath(2, 4'000);
  EXPECT_THAT(textOf({"-d", "192.0.2.7"}),
              HasSubstr("  2     8 ms     8 ms     8 ms  192.0.2.7 \r\n"));
  EXPECT_THAT(network_.lookups, ElementsAre());
}

TEST_F(TracertRun, TracesOverIpv6) {
  network_.hops[1] = {passing("2001:db8::1", 4'000)};
  network_.hops[2] = {arrival("2001:db8::7", 8'000)};
  EXPECT_THAT(textOf({"2001:db8::7"}),
              HasSubstr("  1     4 ms     4 ms     4 ms  2001:db8::1 \r\n"
                        "  2     8 ms     8 ms     8 ms  2001:db8::7 \r\n"));
}

TEST_F(TracertRun, RoundsTimesToTheNearestMillisecond) {
  network_.makePath(1, 4'000);
  network_.echoes[{1, 0}] = {arrival("192.0.2.7", 1'499)};
  network_.echoes[{1, 1}] = {arrival("192.0.2.7", 1'500)};
  network_.echoes[{1, 2}] = {arrival("192.0.2.7", 234'567)};
  EXPECT_THAT(textOf({"192.0.2.7"}), HasSubstr("  1     1 ms     2 ms   235 ms  192.0.2.7 \r\n"));
}

TEST_F(TracertRun, WritesEachColumnWhenItIsKnown) {
  network_.makePath(1, 4'000);
  network_.echoes[{1, 1}] = {arrival("192.0.2.7", 20'000)};
  network_.echoes[{1, 2}] = {arrival("192.0.2.7", 40'000)};
  run({"-d", "192.0.2.7"});
  EXPECT_THAT(
      output_.pieces,
      ElementsAre("\r\nTracing route to 192.0.2.7 over a maximum of 30 hops\r\n\r\n  1  ",
                  "   4 ms  ", "  20 ms  ", "  40 ms  192.0.2.7 \r\n\r\nTrace complete.\r\n"));
}

TEST_F(TracertRun, KeepsTheOrderOfHopsWhateverTheOrderOfAnswers) {
  network_.makePath(3, 4'000);
  network_.hops[1] = {passing("203.0.113.1", 90'000)};
  EXPECT_THAT(textOf({"-d", "192.0.2.7"}),
              HasSubstr("  1    90 ms    90 ms    90 ms  203.0.113.1 \r\n"
                        "  2     8 ms     8 ms     8 ms  203.0.113.2 \r\n"
                        "  3    12 ms    12 ms    12 ms  192.0.2.7 \r\n"));
}

TEST_F(TracertRun, TakesALittleMoreThanTheLongestRoundTripForAWholePath) {
  network_.makePath(8, 10'000);
  run({"-d", "192.0.2.7"});
  EXPECT_LT(taken(), 100'000);
}

TEST_F(TracertRun, DoesNotWaitAllOfTheTimeoutForASilentHopAmongOthers) {
  network_.makePath(4, 10'000);
  network_.hops[2] = {};
  run({"-d", "192.0.2.7"});
  EXPECT_LT(taken(), 520'000);
}

TEST_F(TracertRun, WaitsHalfASecondForARouterOnAQuickPath) {
  network_.makePath(4, 3'000);
  network_.hops[2] = {passing("203.0.113.2", 490'000)};
  EXPECT_THAT(textOf({"-d", "192.0.2.7"}),
              HasSubstr("  2   490 ms   490 ms   490 ms  203.0.113.2 \r\n"));
}

TEST_F(TracertRun, WaitsTenRoundTripsForARouterOnALongPath) {
  network_.makePath(4, 30'000);
  network_.hops[2] = {passing("203.0.113.2", 890'000)};
  EXPECT_THAT(textOf({"-d", "192.0.2.7"}),
              HasSubstr("  2   890 ms   890 ms   890 ms  203.0.113.2 \r\n"));
}

TEST_F(TracertRun, WaitsForASilentRouterNoLongerThanTenRoundTripsBehindIt) {
  network_.makePath(4, 30'000);
  network_.hops[2] = {passing("203.0.113.2", 910'000)};
  EXPECT_THAT(textOf({"-d", "192.0.2.7"}),
              HasSubstr("  2     *        *        *     Request timed out.\r\n"));
}

TEST_F(TracertRun, WithATimeoutTakesAnAnswerUpToItsLastMoment) {
  network_.makePath(4, 3'000);
  network_.hops[2] = {passing("203.0.113.2", 2'500'000)};
  EXPECT_THAT(textOf({"-d", "-w", "2500", "192.0.2.7"}),
              HasSubstr("  2  2500 ms  2500 ms  2500 ms  203.0.113.2 \r\n"));
}

TEST_F(TracertRun, WaitsForASilentHopToTheLetterOfItsTimeout) {
  network_.makePath(4, 10'000);
  network_.hops[2] = {};
  run({"-d", "-w", "2500", "192.0.2.7"});
  EXPECT_GE(taken(), 2'500'000);
}

TEST_F(TracertRun, CountsAnAnswerBehindItsExactTimeoutAsLost) {
  network_.makePath(1, 4'000);
  network_.echoes[{1, 1}] = {arrival("192.0.2.7", 50'001)};
  EXPECT_THAT(textOf({"-d", "-w", "50", "192.0.2.7"}),
              HasSubstr("  1     4 ms     *        4 ms  192.0.2.7 \r\n"));
}

TEST_F(TracertRun, PrintsALateAnswerOfAHopThatHasAnswered) {
  network_.makePath(2, 4'000);
  network_.echoes[{1, 1}] = {passing("203.0.113.1", 400'000)};
  EXPECT_THAT(textOf({"-d", "192.0.2.7"}),
              HasSubstr("  1     4 ms   400 ms     4 ms  203.0.113.1 \r\n"));
}

TEST_F(TracertRun, IgnoresSecondAnswers) {
  network_.makePath(2, 4'000);
  network_.hops[1] = {passing("203.0.113.1", 4'000), passing("203.0.113.99", 4'100)};
  EXPECT_THAT(textOf({"-d", "192.0.2.7"}),
              HasSubstr("  1     4 ms     4 ms     4 ms  203.0.113.1 \r\n"));
}

TEST_F(TracertRun, OfRoutersThatShareAHopShowsTheLastThatAnswered) {
  network_.makePath(2, 4'000);
  network_.echoes[{1, 1}] = {passing("203.0.113.99", 9'000)};
  network_.echoes[{1, 2}] = {};
  EXPECT_THAT(textOf({"-d", "192.0.2.7"}),
              HasSubstr("  1     4 ms     9 ms     *     203.0.113.99 \r\n"));
}

TEST_F(TracertRun, PrintsWhatARouterReports) {
  network_.makePath(3, 4'000);
  network_.hops[2] = {refusal("203.0.113.1", 4'000, IcmpError::NetUnreachable)};
  EXPECT_EQ(run({"-d", "192.0.2.7"}), 0);
  EXPECT_THAT(output_.text(), EndsWith("  1     4 ms     4 ms     4 ms  203.0.113.1 \r\n"
                                       "  2  203.0.113.1  reports: Destination net unreachable.\r\n"
                                       "\r\n"
                                       "Trace complete.\r\n"));
}

TEST_F(TracertRun, PrintsAReportBehindTheColumnsBeforeIt) {
  network_.reverseNames["203.0.113.1"] = "gateway.example";
  network_.makePath(3, 4'000);
  network_.echoes[{1, 1}] = {refusal("203.0.113.1", 4'000)};
  EXPECT_THAT(textOf({"192.0.2.7"}),
              EndsWith("  1     4 ms  gateway.example [203.0.113.1]  reports: Destination host "
                       "unreachable.\r\n"
                       "\r\n"
                       "Trace complete.\r\n"));
}

TEST_F(TracertRun, WithoutAnEndStopsAtTheLastHop) {
  network_.hops[1] = {passing("203.0.113.1", 4'000)};
  const std::string text = textOf({"-d", "192.0.2.7"});
  EXPECT_THAT(text, EndsWith(" 30     4 ms     4 ms     4 ms  203.0.113.1 \r\n"
                             "\r\n"
                             "Trace complete.\r\n"));
}

TEST_F(TracertRun, OfAPathThatNobodyAnswersOnEndsSoonAfterOneTimeout) {
  EXPECT_EQ(run({"-d", "192.0.2.7"}), 0);
  EXPECT_LT(taken(), 4'500'000);
}

TEST_F(TracertRun, SendsThreeProbesOfEqualFlowToEachHop) {
  network_.makePath(3, 4'000);
  run({"-d", "192.0.2.7"});
  EXPECT_EQ(network_.sentTo(1), 3);
  EXPECT_EQ(network_.sentTo(3), 3);
  EXPECT_TRUE(network_.requests.front().oneFlow);
}

TEST_F(TracertRun, LeavesOutANameThatDoesNotComeInTwoSeconds) {
  network_.names["www.example.net"] = "192.0.2.7";
  network_.reverseNames["203.0.113.1"] = "slow.example";
  network_.nameDelays["203.0.113.1"] = 60 * kSecond;
  network_.makePath(2, 4'000);
  EXPECT_THAT(textOf({"www.example.net"}),
              HasSubstr("  1     4 ms     4 ms     4 ms  203.0.113.1 \r\n"));
  EXPECT_EQ(taken(), 2'004'000);
}

TEST_F(TracertRun, WaitsForAllNamesAtTheSameTime) {
  network_.names["www.example.net"] = "192.0.2.7";
  network_.makePath(5, 4'000);
  for (int hop = 1; hop < 5; ++hop) {
    const std::string address = "203.0.113." + std::to_string(hop);
    network_.reverseNames[address] = "hop.example";
    network_.nameDelays[address] = kSecond;
  }
  EXPECT_THAT(textOf({"www.example.net"}), HasSubstr("hop.example [203.0.113.4] \r\n"));
  EXPECT_LT(taken(), 1'100'000);
}

TEST_F(TracertRun, ProbesWhileTheNameOfItsTitleIsLookedUp) {
  network_.nameDelays["192.0.2.7"] = kSecond;
  network_.makePath(5, 4'000);
  run({"192.0.2.7"});
  EXPECT_EQ(taken(), kSecond);
}

TEST_F(TracertRun, LooksEachNameUpOnce) {
  network_.makePath(2, 4'000);
  run({"192.0.2.7"});
  EXPECT_THAT(network_.lookups, ElementsAre("192.0.2.7", "203.0.113.1"));
}

TEST_F(TracertRun, SaysThatAHostCouldNotBeFound) {
  EXPECT_EQ(run({"nosuch.example"}), 1);
  EXPECT_EQ(output_.text(), "Unable to resolve target system name nosuch.example.\r\n");
}

TEST_F(TracertRun, SaysWhenTheSystemAllowsNoEcho) {
  network_.openResult = OpenResult::NotAllowed;
  EXPECT_EQ(run({"192.0.2.7"}), 1);
  EXPECT_EQ(output_.text(),
            "TRACERT: this system allows no echo to this user: neither net.ipv4.ping_group_range "
            "nor the capability CAP_NET_RAW permits it.\r\n");
}

TEST_F(TracertRun, SendsFromTheChosenSource) {
  network_.makePath(1, 4'000);
  run({"-S", "198.51.100.20", "192.0.2.7"});
  EXPECT_EQ(network_.source, addressOf("198.51.100.20"));
}

TEST_F(TracertRun, LeadsItsProbesThroughTheChosenHosts) {
  network_.names["gateway.example"] = "203.0.113.1";
  network_.makePath(1, 4'000);
  run({"-j", "gateway.example", "203.0.113.2", "192.0.2.7"});
  EXPECT_THAT(network_.requests.front().through,
              ElementsAre(addressOf("203.0.113.1"), addressOf("203.0.113.2")));
}

TEST_F(TracertRun, SaysWhichHostOnTheWayCouldNotBeFound) {
  EXPECT_EQ(run({"-j", "nosuch.example", "192.0.2.7"}), 1);
  EXPECT_EQ(output_.text(), "Unable to resolve the name nosuch.example of a host on the way.\r\n");
}

TEST_F(TracertRun, ThatCannotSendFails) {
  network_.failsFrom = 1;
  EXPECT_EQ(run({"-d", "192.0.2.7"}), 1);
  EXPECT_THAT(output_.text(), EndsWith("  1  General failure.\r\n"
                                       "\r\n"
                                       "Trace complete.\r\n"));
}

TEST_F(TracertRun, StoppedByTheUserEndsItsLineAtOnce) {
  network_.makePath(1, 4'000);
  network_.echoes[{1, 1}] = {};
  network_.interruptAt = 1'100'000;
  EXPECT_EQ(run({"-d", "192.0.2.7"}), 130);
  EXPECT_THAT(output_.text(), EndsWith("hops\r\n\r\n  1     4 ms  \r\n"));
  EXPECT_EQ(taken(), 100'000);
}

TEST_F(TracertRun, EndsInSilenceWhenItsReaderIsGone) {
  network_.makePath(3, 4'000);
  output_.failFrom = 1;
  EXPECT_EQ(run({"-d", "192.0.2.7"}), 1);
  EXPECT_EQ(output_.attempts, 2U);
}

TEST_F(TracertRun, WithoutArgumentsPrintsItsUsageAndFails) {
  EXPECT_EQ(run({}), 1);
  EXPECT_THAT(output_.text(), StartsWith("\r\nUsage: tracert [-d] [-h maximum_hops]"));
}

TEST_F(TracertRun, AskedForItsUsageEndsWell) {
  EXPECT_EQ(run({"-?"}), 0);
  EXPECT_THAT(output_.text(), StartsWith("\r\nUsage: tracert [-d] [-h maximum_hops]"));
}

TEST_F(TracertRun, NamesABadOptionBeforeItsUsage) {
  EXPECT_EQ(run({"-z", "192.0.2.7"}), 1);
  EXPECT_THAT(output_.text(), StartsWith("Bad option -z.\r\n\r\nUsage: tracert "));
}

}  // namespace
}  // namespace veltrin
