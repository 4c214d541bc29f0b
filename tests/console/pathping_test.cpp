// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/pathping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "route_run.h"

namespace veltrin {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// The hop that an echo went to, and when, since the first of its kind.
using Query = std::pair<int, Microseconds>;

class PathpingRun : public RouteRun<Pathping> {
 protected:
  // The last echoes that were sent.
  std::vector<Query> queries(std::size_t count) {
    std::vector<Query> queries;
    const std::size_t first = network_.requests.size() - count;
    for (std::size_t at = first; at < network_.requests.size(); ++at) {
      queries.emplace_back(network_.requests[at].ttl,
                           network_.sendTimes[at] - network_.sendTimes[first]);
    }
    return queries;
  }
};

TEST_F(PathpingRun, PrintsThePathAndItsTable) {
  network_.names["www.example.net"] = "192.0.2.7";
  network_.reverseNames["203.0.113.1"] = "gateway.example";
  network_.makePath(3, 4'000);
  network_.hops[2] = {};

  EXPECT_EQ(run({"-q", "4", "-p", "250", "www.example.net"}), 0);
  EXPECT_EQ(output_.text(),
            "\r\n"
            "Tracing route to www.example.net [192.0.2.7]\r\n"
            "over a maximum of 30 hops:\r\n"
            "  0  mypc [198.51.100.20] \r\n"
            "  1  gateway.example [203.0.113.1] \r\n"
            "  2     *        *        *     \r\n"
            "  3  192.0.2.7 \r\n"
            "\r\n"
            "Computing statistics for 3 seconds...\r\n"
            "            Source to Here   This Node/Link\r\n"
            "Hop  RTT    Lost/Sent = Pct  Lost/Sent = Pct  Address\r\n"
            "  0                                           mypc [198.51.100.20] \r\n"
            "                                0/   4 =  0%   |\r\n"
            "  1    4ms     0/   4 =  0%     0/   4 =  0%  gateway.example [203.0.113.1] \r\n"
            "                                0/   4 =  0%   |\r\n"
            "  2  ---       4/   4 =100%     4/   4 =100%  0.0.0.0 \r\n"
            "                                0/   4 =  0%   |\r\n"
            "  3   12ms     0/   4 =  0%     0/   4 =  0%  192.0.2.7 \r\n"
            "\r\n"
            "Trace complete.\r\n");
}

TEST_F(PathpingRun, PrintsANumericDestinationWithoutANameOnOneLine) {
  network_.makePath(1, 4'000);
  EXPECT_THAT(textOf({"-n", "-q", "1", "192.0.2.7"}),
              StartsWith("\r\n"
                         "Tracing route to 192.0.2.7 over a maximum of 30 hops\r\n"
                         "  0  198.51.100.20 \r\n"
                         "  1  192.0.2.7 \r\n"));
}

TEST_F(PathpingRun, TellsTheTimeOfAllQueriesToAllHops) {
  network_.makePath(3, 4'000);
  EXPECT_THAT(textOf({"-n", "192.0.2.7"}), HasSubstr("Computing statistics for 75 seconds...\r\n"));
}

TEST_F(PathpingRun, TellsTheTimeOfHopsSideBySide) {
  network_.makePath(3, 4'000);
  EXPECT_THAT(textOf({"-n", "-b", "192.0.2.7"}),
              HasSubstr("Computing statistics for 25 seconds...\r\n"));
}

TEST_F(PathpingRun, TakesTheTimeThatItTells) {
  network_.makePath(15, 4'000);
  run({"-n", "-q", "20", "-p", "100", "192.0.2.7"});
  EXPECT_GE(taken(), 30'000'000 - 100'000);
  EXPECT_LT(taken(), 30'200'000);
}

TEST_F(PathpingRun, SideBySideTakesQueriesTimesPeriodForAllHopsTogether) {
  network_.makePath(15, 4'000);
  run({"-n", "-b", "-q", "20", "-p", "100", "192.0.2.7"});
  EXPECT_GE(taken(), 2'000'000);
  EXPECT_LT(taken(), 2'200'000);
}

TEST_F(PathpingRun, SendsOneQueryEachPeriodToTheHopsInTurn) {
  network_.makePath(3, 4'000);
  run({"-n", "-q", "2", "-p", "100", "192.0.2.7"});
  EXPECT_THAT(queries(6), ElementsAre(Query(1, 0), Query(2, 100'000), Query(3, 200'000),
                                      Query(1, 300'000), Query(2, 400'000), Query(3, 500'000)));
}

TEST_F(PathpingRun, SideBySideSendsAQueryToEveryHopEachPeriod) {
  network_.makePath(2, 4'000);
  run({"-n", "-b", "-q", "2", "-p", "100", "192.0.2.7"});
  EXPECT_THAT(queries(4),
              ElementsAre(Query(1, 0), Query(2, 50'000), Query(1, 100'000), Query(2, 150'000)));
}

TEST_F(PathpingRun, SendsEchoesWithPriorityNoOftenerThanOthers) {
  network_.makePath(2, 4'000);
  run({"-n", "-T", "-q", "1", "-p", "100", "192.0.2.7"});
  const std::vector<Query> sent = queries(8);
  EXPECT_THAT(std::vector<Query>(sent.begin(), sent.begin() + 6),
              ElementsAre(Query(1, 0), Query(2, 100'000), Query(1, 200'000), Query(2, 300'000),
                          Query(1, 400'000), Query(2, 500'000)));
}

TEST_F(PathpingRun, FindsItsPathAsQuicklyAsATrace) {
  network_.makePath(15, 4'000);
  run({"-n", "-q", "1", "-p", "100", "192.0.2.7"});
  const Microseconds firstQuery = network_.sendTimes[network_.sendTimes.size() - 15];
  EXPECT_LT(firstQuery - 1'000'000, 100'000);
}

TEST_F(PathpingRun, DoesNotWaitInItsStatisticsForAHopThatNeverAnswered) {
  network_.makePath(3, 4'000);
  network_.hops[2] = {};
  run({"-n", "-q", "1", "-p", "10", "192.0.2.7"});
  EXPECT_LT(taken(), 600'000);
}

TEST_F(PathpingRun, WaitsAllOfItsTimeoutForEachReplyWhenItIsToldOne) {
  network_.makePath(3, 4'000);
  network_.hops[2] = {};
  run({"-n", "-q", "1", "-p", "10", "-w", "2000", "192.0.2.7"});
  EXPECT_GE(taken(), 4'000'000);
}

TEST_F(PathpingRun, SendsEachHopItsQueries) {
  network_.makePath(3, 4'000);
  run({"-n", "-q", "20", "-p", "100", "192.0.2.7"});
  EXPECT_EQ(network_.sentTo(1), 23);
  EXPECT_EQ(network_.sentTo(3), 23);
}

TEST_F(PathpingRun, BehindTheLastHopThatAnswersShowsOneSilentOne) {
  network_.makePath(2, 4'000);
  network_.hops[2] = {passing("203.0.113.2", 8'000)};
  network_.lastGoesOn = false;
  EXPECT_THAT(textOf({"-n", "-q", "1", "192.0.2.7"}),
              AllOf(HasSubstr("  2  203.0.113.2 \r\n"
                              "  3     *        *        *     \r\n"
                              "\r\n"
                              "Computing statistics for 1 seconds...\r\n"),
                    EndsWith("  2    8ms     0/   1 =  0%     0/   1 =  0%  203.0.113.2 \r\n"
                             "\r\n"
                             "Trace complete.\r\n")));
}

TEST_F(PathpingRun, OfAPathThatNobodyAnswersOnMeasuresNothing) {
  EXPECT_EQ(run({"-n", "192.0.2.7"}), 0);
  EXPECT_THAT(output_.text(),
              EndsWith("  0  198.51.100.20 \r\n"
                       "  1     *        *        *     \r\n"
                       "\r\n"
                       "Computing statistics for 0 seconds...\r\n"
                       "            Source to Here   This Node/Link\r\n"
                       "Hop  RTT    Lost/Sent = Pct  Lost/Sent = Pct  Address\r\n"
                       "  0                                           198.51.100.20 \r\n"
                       "\r\n"
                       "Trace complete.\r\n"));
}

TEST_F(PathpingRun, PrintsWhatARouterReports) {
  network_.makePath(2, 4'000);
  network_.hops[2] = {refusal("203.0.113.1", 4'000)};
  EXPECT_THAT(textOf({"-n", "-q", "1", "192.0.2.7"}),
              HasSubstr("  2  203.0.113.1  reports: Destination host unreachable.\r\n"));
}

TEST_F(PathpingRun, TellsWhatCannotBeKnownOfReservations) {
  network_.makePath(1, 4'000);
  EXPECT_THAT(textOf({"-n", "-q", "1", "-P", "-R", "192.0.2.7"}),
              HasSubstr("\r\n"
                        "RSVP PATH connectivity cannot be tested: its messages are IP protocol "
                        "46, and this\r\n"
                        "program keeps no right to send any but echoes.\r\n"
                        "\r\n"
                        "Which hops are RSVP aware cannot be tested: routers do not tell it in "
                        "what they\r\n"
                        "answer to echoes.\r\n"
                        "\r\n"
                        "Computing statistics"));
}

TEST_F(PathpingRun, TellsWhichHopsAnswerEchoesWithPriority) {
  network_.makePath(3, 4'000);
  network_.hops[2] = {};
  EXPECT_THAT(textOf({"-n", "-q", "1", "-T", "192.0.2.7"}),
              HasSubstr("\r\n"
                        "Sending echoes with priority 6...\r\n"
                        "  1  answers    203.0.113.1 \r\n"
                        "  2  no answer  0.0.0.0 \r\n"
                        "  3  answers    192.0.2.7 \r\n"
                        "Which links carried the priority as a tag in their frames cannot be "
                        "seen from here.\r\n"));
}

TEST_F(PathpingRun, GivesPriorityOnlyToTheEchoesThatTestIt) {
  network_.makePath(1, 4'000);
  run({"-n", "-q", "1", "-T", "-h", "1", "192.0.2.7"});
  std::vector<int> priorities;
  for (const EchoRequest& request : network_.requests) {
    priorities.push_back(request.priority);
  }
  EXPECT_THAT(priorities, ElementsAre(0, 0, 0, 6, 6, 6, 0));
}

TEST_F(PathpingRun, DoesNotTakeALateAnswerOfTheTraceForOneOfTheStatistics) {
  network_.makePath(1, 4'000);
  network_.echoes[{1, 1}] = {arrival("192.0.2.7", 100'000)};
  EXPECT_THAT(textOf({"-n", "-q", "1", "-p", "1000", "192.0.2.7"}),
              HasSubstr("  1    4ms     0/   1 =  0% "));
}

TEST_F(PathpingRun, StoppedDuringTheStatisticsPrintsWhatItHas) {
  network_.makePath(1, 4'000);
  network_.echoes[{1, 4}] = {};
  network_.interruptAt = 1'000'000 + 850'000;
  EXPECT_EQ(run({"-n", "-q", "100", "-p", "200", "-h", "1", "192.0.2.7"}), 130);
  EXPECT_THAT(output_.text(),
              EndsWith("  1    4ms     1/   5 = 20%     0/   5 =  0%  192.0.2.7 \r\n"));
}

TEST_F(PathpingRun, EndsInSilenceWhenItsReaderIsGone) {
  network_.makePath(3, 4'000);
  output_.failFrom = 1;
  EXPECT_EQ(run({"-n", "192.0.2.7"}), 1);
  EXPECT_EQ(output_.attempts, 2U);
}

TEST_F(PathpingRun, ThatCannotSendFails) {
  network_.failsFrom = 1;
  EXPECT_EQ(run({"-n", "192.0.2.7"}), 1);
  EXPECT_THAT(output_.text(), EndsWith("  1  General failure.\r\n"
                                       "\r\n"
                                       "Trace complete.\r\n"));
}

TEST_F(PathpingRun, SaysThatAHostCouldNotBeFound) {
  EXPECT_EQ(run({"nosuch.example"}), 1);
  EXPECT_EQ(output_.text(), "Unable to resolve target system name nosuch.example.\r\n");
}

TEST_F(PathpingRun, AskedForItsUsageEndsWell) {
  EXPECT_EQ(run({"/?"}), 0);
  EXPECT_THAT(output_.text(), StartsWith("\r\nUsage: pathping [-g host-list]"));
}

}  // namespace
}  // namespace veltrin
