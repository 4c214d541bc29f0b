// SPDX-License-Identifier: GPL-3.0-or-later
// tracert and pathping on every path of the lab. Skipped with the lab's reason
// where it cannot run.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <unistd.h>
#include <vector>

#include "lab_program.h"
#include "tests/console/route_reading.h"

namespace veltrin::lab {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

using RouteLab = LabRunning;

// Runs a line inside a scenario in which $TRACERT and $PATHPING are the programs.
Outcome runIn(const std::string& scenario, const std::string& line) {
  return runLine(std::string("export TRACERT='") + ROUTE_TRACERT + "' PATHPING='" + ROUTE_PATHPING +
                 "'; \"$LAB\" " + scenario + " -- " + line);
}

std::string tracertIn(const std::string& scenario, const std::string& arguments) {
  return runIn(scenario, "\"$TRACERT\" " + arguments).text;
}

std::string pathpingIn(const std::string& scenario, const std::string& arguments) {
  return runIn(scenario, "\"$PATHPING\" " + arguments).text;
}

// The line of a hop; empty when there is none.
std::string lineOf(const std::string& text, int hop) {
  std::smatch line;
  const std::regex wanted("\r\n( *" + std::to_string(hop) + "  [^\r]*)\r\n");
  return std::regex_search(text, line, wanted) ? line[1].str() : "";
}

// The line of a hop in the table of pathping; empty when there is none.
std::string tableLineOf(const std::string& text, int hop) {
  const std::size_t table = text.find("Hop  RTT");
  return table == std::string::npos ? "" : lineOf(text.substr(table), hop);
}

const std::vector<std::string> kCleanPath = {
    "192.0.2.1",     "198.51.100.2",  "198.51.100.3",  "198.51.100.4",  "198.51.100.5",
    "198.51.100.6",  "198.51.100.7",  "198.51.100.8",  "198.51.100.9",  "198.51.100.10",
    "198.51.100.11", "198.51.100.12", "198.51.100.13", "198.51.100.14", "203.0.113.80"};

TEST_F(RouteLab, TraceFindsTheFifteenHops) {
  const Outcome outcome = runIn("clean-15", "\"$TRACERT\" -d -4 target.example");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.text, StartsWith("\r\n"
                                       "Tracing route to target.example [203.0.113.80]\r\n"
                                       "over a maximum of 30 hops:\r\n"
                                       "\r\n"));
  EXPECT_EQ(hopsOfTrace(outcome.text), kCleanPath);
}

TEST_F(RouteLab, TraceNamesItsHops) {
  const std::string text = tracertIn("clean-15", "203.0.113.80");
  EXPECT_THAT(text, StartsWith("\r\n"
                               "Tracing route to target.example [203.0.113.80]\r\n"
                               "over a maximum of 30 hops:\r\n"));
  EXPECT_THAT(lineOf(text, 1), EndsWith("  gateway.example [192.0.2.1] "));
  EXPECT_THAT(lineOf(text, 14), EndsWith("  hop-14.example [198.51.100.14] "));
}

TEST_F(RouteLab, TraceFindsTheHopsOverIpv6) {
  const std::string text = tracertIn("ipv6", "-d -6 target.example");
  EXPECT_THAT(lineOf(text, 1), EndsWith("  2001:db8::1 "));
  EXPECT_THAT(lineOf(text, 14), EndsWith("  2001:db8:0:e::1 "));
  EXPECT_THAT(lineOf(text, 15), EndsWith("  2001:db8:0:80::1 "));
  EXPECT_THAT(text, EndsWith("\r\n\r\nTrace complete.\r\n"));
}

TEST_F(RouteLab, TraceShowsSilentHops) {
  std::vector<std::string> path = kCleanPath;
  path[2] = path[7] = path[8] = "*";
  EXPECT_EQ(hopsOfTrace(tracertIn("silent-15", "-d target.example")), path);
}

TEST_F(RouteLab, TraceReachesTheThirtiethHop) {
  const std::string text = tracertIn("long-30", "-d target.example");
  const std::vector<std::string> hops = hopsOfTrace(text);
  ASSERT_EQ(hops.size(), 30U) << text;
  EXPECT_EQ(hops[29], "203.0.113.80");
}

TEST_F(RouteLab, TraceToAHostTooFarAwayStopsAtTheThirtiethHop) {
  const std::string text = tracertIn("long-30", "-d too-far.example");
  const std::vector<std::string> hops = hopsOfTrace(text);
  ASSERT_EQ(hops.size(), 30U) << text;
  EXPECT_EQ(hops[29], "198.51.100.30") << text;
}

TEST_F(RouteLab, TraceTakesOneOfTheRoutersThatShareAHop) {
  const std::vector<std::string> hops = hopsOfTrace(tracertIn("balanced", "-d target.example"));
  ASSERT_EQ(hops.size(), 8U);
  EXPECT_THAT(hops[3], StartsWith("198.51.100.4"));
  EXPECT_EQ(hops[7], "203.0.113.80");
}

TEST_F(RouteLab, TraceTellsWhatARouterReports) {
  EXPECT_THAT(tracertIn("unreachable", "-d -4 target.example"),
              EndsWith("  198.51.100.5 \r\n"
                       "  6  198.51.100.5  reports: Destination host unreachable.\r\n"
                       "\r\n"
                       "Trace complete.\r\n"));
}

TEST_F(RouteLab, TraceStaysWholeWhenAnswersComeTwiceAndLate) {
  EXPECT_THAT(hopsOfTrace(tracertIn("odd-replies", "-d target.example")),
              ElementsAre("192.0.2.1", "198.51.100.2", "198.51.100.3", "198.51.100.4",
                          "198.51.100.5", "198.51.100.6", "203.0.113.80"));
}

TEST_F(RouteLab, TraceWaitsForARouterThatAnswersLateOnAQuickPath) {
  const std::string text = tracertIn("slow-router", "-d target.example");
  EXPECT_THAT(lineOf(text, 5),
              MatchesRegex("  5   [2-4][0-9][0-9] ms   [2-4][0-9][0-9] ms   [2-4][0-9][0-9] ms  "
                           "198\\.51\\.100\\.5 "))
      << text;
  EXPECT_EQ(hopsOfTrace(text).size(), 9U);
}

TEST_F(RouteLab, TraceFindsRoutersThatAnswerSeldom) {
  EXPECT_EQ(hopsOfTrace(tracertIn("rate-limited", "-d target.example")), kCleanPath);
}

TEST_F(RouteLab, TracePassesANarrowLink) {
  EXPECT_THAT(hopsOfTrace(tracertIn("mtu-1400", "-d -4 target.example")),
              testing::Contains("203.0.113.80"));
}

// The lab's path beyond hop 7 dies 20 s after the first packet and returns at 35 s. All probes
// of a trace go out within a second, so with three seconds of patience the dead path is told
// long before it returns, and a machine that stands still for a moment loses none of a path
// that lives.
TEST_F(RouteLab, TraceFollowsAPathThatDiesAndReturns) {
  const std::string trace = "\"$TRACERT\" -d -w 3000 target.example";
  const std::string text = runIn("dies-and-returns", "sh -c '" + trace + "; sleep 21; " + trace +
                                                         "; sleep 15; " + trace + "'")
                               .text;
  const std::size_t second = text.find("Tracing route", 20);
  const std::size_t third = text.find("Tracing route", second + 20);
  ASSERT_NE(third, std::string::npos);
  std::vector<std::string> dead(kCleanPath.begin(), kCleanPath.begin() + 7);
  dead.resize(30, "*");
  EXPECT_EQ(hopsOfTrace(text.substr(0, second)), kCleanPath);
  EXPECT_EQ(hopsOfTrace(text.substr(second, third - second)), dead);
  EXPECT_EQ(hopsOfTrace(text.substr(third)), kCleanPath);
}

TEST_F(RouteLab, TwoTracesAtOnceTakeOnlyTheirOwnAnswers) {
  const Outcome outcome =
      runIn("clean-15",
            "sh -c 'FILE=$(mktemp); \"$TRACERT\" -d -4 target.example > $FILE & \"$TRACERT\" -d -4 "
            "target.example; wait; cat $FILE; rm $FILE'");
  std::vector<std::string> both = kCleanPath;
  both.insert(both.end(), kCleanPath.begin(), kCleanPath.end());
  EXPECT_EQ(hopsOfTrace(outcome.text), both);
}

TEST_F(RouteLab, TraceNeedsNoPrivilegeWhereTheKernelAllowsEchoes) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only the superuser can become another user";
  }
  EXPECT_EQ(hopsOfTrace(runIn("clean-15",
                              "setpriv --reuid 65534 --regid 65534 --clear-groups --bounding-set "
                              "-all \"$TRACERT\" -d -4 target.example")
                            .text),
            kCleanPath);
}

TEST_F(RouteLab, TraceWorksThroughRawSockets) {
  for (const char* version : {"-4", "-6"}) {
    const Outcome outcome =
        runIn("clean-15", std::string("sh -c 'echo 1 0 > /proc/sys/net/ipv4/ping_group_range; "
                                      "\"$TRACERT\" -d ") +
                              version + " target.example'");
    EXPECT_EQ(hopsOfTrace(outcome.text).size(), 15U) << outcome.text;
  }
}

TEST_F(RouteLab, TraceWithoutAWayOutFails) {
  const Outcome outcome =
      runIn("clean-15", "sh -c 'ip route del default; \"$TRACERT\" -d 203.0.113.80'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.text, EndsWith("  1  General failure.\r\n"
                                     "\r\n"
                                     "Trace complete.\r\n"));
}

TEST_F(RouteLab, StatisticsOfACleanPathShowNoLoss) {
  const Outcome outcome =
      runIn("clean-15", "\"$PATHPING\" -n -4 -q 5 -p 20 -T -P -R target.example");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.text, AllOf(HasSubstr("  0  192.0.2.2 \r\n  1  192.0.2.1 \r\n"),
                                  HasSubstr(" 15  answers    203.0.113.80 \r\n"),
                                  HasSubstr("Computing statistics for 2 seconds...\r\n"),
                                  HasSubstr("ms     0/   5 =  0%     0/   5 =  0%  203.0.113.80 "
                                            "\r\n\r\nTrace complete.\r\n"),
                                  Not(HasSubstr(" 1/   5"))));
}

TEST_F(RouteLab, StatisticsTellALossyLinkFromALossyRouter) {
  const std::string text = pathpingIn("lossy-middle", "-n -b -q 97 -p 20 target.example");
  static const std::regex kLink("\r\n {31}(1[123])/  97 = 1[123]%   \\|\r\n  7 ");
  EXPECT_TRUE(std::regex_search(text, kLink)) << text;
  EXPECT_THAT(text, testing::ContainsRegex(" [23]/  97 =  [23]%  198\\.51\\.100\\.9 "));
}

TEST_F(RouteLab, StatisticsShowASilentHopBetweenOthers) {
  EXPECT_THAT(pathpingIn("silent-15", "-n -q 4 -p 10 target.example"),
              AllOf(HasSubstr("  3     *        *        *     \r\n  4  198.51.100.4 \r\n"),
                    HasSubstr("  3  ---       4/   4 =100%     4/   4 =100%  0.0.0.0 \r\n")));
}

TEST_F(RouteLab, StatisticsWaitForARouterThatAnswersLate) {
  EXPECT_THAT(
      pathpingIn("slow-router", "-n -q 3 -p 10 target.example"),
      testing::ContainsRegex("\r\n  5  [2-4][0-9][0-9]ms     0/   3 =  0%     0/   3 =  0%  "
                             "198\\.51\\.100\\.5 \r\n"));
}

// The path whose routers answer seldom, each of them now five times a second. With 15
// hops and 25 ms from query to query, a router is asked each 375 ms.
Outcome pathpingOnLimitedPath(const std::string& arguments) {
  return runLine(std::string("FILE=$(mktemp --suffix=.ini); sed 's/^rate-limit = .*/rate-limit = "
                             "5/' '") +
                 LAB_SCENARIOS + "/rate-limited.ini' > $FILE; \"$LAB\" $FILE -- '" +
                 ROUTE_PATHPING + "' -n -q 10 -p 25 " + arguments +
                 " target.example; CODE=$?; rm $FILE; exit $CODE");
}

TEST_F(RouteLab, StatisticsInTurnFindNoLossAtRoutersThatLimitTheirAnswers) {
  const Outcome outcome = pathpingOnLimitedPath("");
  EXPECT_EQ(outcome.code, 0);
  for (int hop = 1; hop <= 15; ++hop) {
    EXPECT_THAT(tableLineOf(outcome.text, hop), HasSubstr("ms     0/  10 =  0%     0/  10 =  0%  "))
        << outcome.text;
  }
}

TEST_F(RouteLab, StatisticsSideBySideFindTheLimitsOfRouters) {
  const Outcome outcome = pathpingOnLimitedPath("-b");
  EXPECT_THAT(tableLineOf(outcome.text, 3), HasSubstr("     0/  10 =  0%     0/  10 =  0%  "));
  for (const int hop : {4, 7, 11, 12}) {
    EXPECT_THAT(tableLineOf(outcome.text, hop), Not(HasSubstr("     0/  10 =  0%")))
        << outcome.text;
  }
}

}  // namespace
}  // namespace veltrin::lab
