// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/route_statistics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "console/pathping_table.h"
#include "fake_network.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr Microseconds kStart = 1'000'000;

// A hop that lost so many of 100 queries.
HopFigures losing(std::uint64_t lost) { return HopFigures{100, 100 - lost, 0}; }

HopLoss loss(std::uint64_t link, std::uint64_t node) { return HopLoss{node, link}; }

TEST(Losses, OfALinkShowAtAllHopsBehindIt) {
  EXPECT_THAT(lossesOf({losing(0), losing(13), losing(13)}),
              ElementsAre(loss(0, 0), loss(13, 0), loss(0, 0)));
}

TEST(Losses, OfANodeShowAtItAlone) {
  EXPECT_THAT(lossesOf({losing(0), losing(16), losing(13), losing(14), losing(13)}),
              ElementsAre(loss(0, 0), loss(13, 3), loss(0, 0), loss(0, 1), loss(0, 0)));
}

TEST(Losses, OfASilentNodeAreItsOwnWhenLaterOnesAnswer) {
  EXPECT_THAT(lossesOf({losing(0), losing(100), losing(2)}),
              ElementsAre(loss(0, 0), loss(2, 98), loss(0, 0)));
}

TEST(Losses, NeverAreLessThanNothing) {
  EXPECT_THAT(lossesOf({losing(40), losing(30), losing(0)}),
              ElementsAre(loss(0, 40), loss(0, 30), loss(0, 0)));
}

TEST(Losses, OfNoHopsAreNone) { EXPECT_THAT(lossesOf({}), IsEmpty()); }

class Statistics : public ::testing::Test {
 protected:
  // Sends all queries of a measurement and hands back hop and moment of each.
  std::vector<std::pair<int, Microseconds>> sendAll(RouteStatistics& statistics) {
    std::vector<std::pair<int, Microseconds>> sent;
    while (statistics.nextAt() != kNever) {
      const Microseconds now = statistics.nextAt();
      const auto probe = statistics.next(now);
      statistics.sent(*probe, Sending{SendResult::Sent, now});
      probes_.push_back(*probe);
      sent.emplace_back(probe->hop, now - kStart);
    }
    return sent;
  }

  void answer(RouteStatistics& statistics, std::size_t probe, Microseconds at,
              std::optional<IcmpError> error = IcmpError::TtlExpired) {
    Incoming incoming;
    incoming.sequence = probes_[probe].sequence;
    incoming.at = at;
    incoming.error = error;
    statistics.take(incoming);
  }

  ProbeBook book_{30, Patience{3 * kSecond, false}};
  std::vector<Probe> probes_;
};

TEST_F(Statistics, QueryTheHopsInTurnSpreadOverEachRound) {
  RouteStatistics statistics(book_, 4, 2, 100'000, kStart);
  EXPECT_THAT(sendAll(statistics),
              ElementsAre(std::pair(1, 0), std::pair(2, 25'000), std::pair(3, 50'000),
                          std::pair(4, 75'000), std::pair(1, 100'000), std::pair(2, 125'000),
                          std::pair(3, 150'000), std::pair(4, 175'000)));
}

TEST_F(Statistics, CountAnswersAndTheirTrips) {
  RouteStatistics statistics(book_, 1, 3, 100'000, kStart);
  sendAll(statistics);
  answer(statistics, 0, kStart + 10'000);
  answer(statistics, 1, kStart + 120'000, std::nullopt);
  EXPECT_THAT(statistics.figures(kNever), ElementsAre(HopFigures{3, 2, 30'000}));
}

TEST_F(Statistics, CountAnAnswerOnce) {
  RouteStatistics statistics(book_, 1, 2, 100'000, kStart);
  sendAll(statistics);
  answer(statistics, 0, kStart + 10'000);
  answer(statistics, 0, kStart + 10'000);
  EXPECT_THAT(statistics.figures(kNever), ElementsAre(HopFigures{2, 1, 10'000}));
}

TEST_F(Statistics, CountARefusalOnlyWhereThePathEnds) {
  RouteStatistics statistics(book_, 2, 1, 100'000, kStart);
  sendAll(statistics);
  answer(statistics, 0, kStart + 10'000, IcmpError::HostUnreachable);
  answer(statistics, 1, kStart + 60'000, IcmpError::HostUnreachable);
  EXPECT_THAT(statistics.figures(kNever),
              ElementsAre(HopFigures{1, 0, 0}, HopFigures{1, 1, 10'000}));
}

TEST_F(Statistics, CountAQueryThatCannotBeSentAsLost) {
  RouteStatistics statistics(book_, 1, 1, 100'000, kStart);
  statistics.sent(*statistics.next(kStart), Sending{SendResult::Failed, kStart});
  EXPECT_THAT(statistics.figures(kNever), ElementsAre(HopFigures{1, 0, 0}));
}

TEST_F(Statistics, DoNotCountWhatMayStillBeAnswered) {
  RouteStatistics statistics(book_, 1, 2, 100'000, kStart);
  sendAll(statistics);
  answer(statistics, 0, kStart + 10'000);
  EXPECT_THAT(statistics.figures(kStart + 100'001), ElementsAre(HopFigures{1, 1, 10'000}));
}

TEST_F(Statistics, AreOverWhenAllIsAnswered) {
  RouteStatistics statistics(book_, 1, 1, 100'000, kStart);
  EXPECT_EQ(statistics.overAt(), kNever);
  sendAll(statistics);
  answer(statistics, 0, kStart + 10'000);
  EXPECT_EQ(statistics.overAt(), 0);
}

TEST_F(Statistics, WaitForTheLastAnswerOfAHopThatAnswers) {
  RouteStatistics statistics(book_, 1, 2, 100'000, kStart);
  sendAll(statistics);
  answer(statistics, 0, kStart + 10'000);
  EXPECT_EQ(statistics.overAt(), kStart + 100'000 + 430'000);
}

TEST_F(Statistics, DoNotWaitForAHopThatNeverAnswered) {
  RouteStatistics statistics(book_, 1, 2, 100'000, kStart);
  sendAll(statistics);
  EXPECT_EQ(statistics.overAt(), 0);
}

TEST_F(Statistics, WaitAllOfAnExactTimeoutForAHopThatNeverAnswered) {
  ProbeBook exact(30, Patience{2 * kSecond, true});
  RouteStatistics statistics(exact, 1, 2, 100'000, kStart);
  sendAll(statistics);
  EXPECT_EQ(statistics.overAt(), kStart + 100'000 + 2 * kSecond);
}

TEST(PathTable, ShowsLinksAndNodes) {
  EXPECT_EQ(pathTable("mypc [198.51.100.20]", {{"198.51.100.1", {100, 100, 4'100'000}},
                                               {"203.0.113.9", {100, 84, 1'881'600}},
                                               {"203.0.113.33", {100, 87, 34'800}}}),
            "            Source to Here   This Node/Link\r\n"
            "Hop  RTT    Lost/Sent = Pct  Lost/Sent = Pct  Address\r\n"
            "  0                                           mypc [198.51.100.20] \r\n"
            "                                0/ 100 =  0%   |\r\n"
            "  1   41ms     0/ 100 =  0%     0/ 100 =  0%  198.51.100.1 \r\n"
            "                               13/ 100 = 13%   |\r\n"
            "  2   22ms    16/ 100 = 16%     3/ 100 =  3%  203.0.113.9 \r\n"
            "                                0/ 100 =  0%   |\r\n"
            "  3    0ms    13/ 100 = 13%     0/ 100 =  0%  203.0.113.33 \r\n");
}

TEST(PathTable, ShowsNoRoundTripOfASilentHop) {
  EXPECT_EQ(pathTable("mypc", {{"0.0.0.0", {20, 0, 0}}}),
            "            Source to Here   This Node/Link\r\n"
            "Hop  RTT    Lost/Sent = Pct  Lost/Sent = Pct  Address\r\n"
            "  0                                           mypc \r\n"
            "                               20/  20 =100%   |\r\n"
            "  1  ---      20/  20 =100%     0/  20 =  0%  0.0.0.0 \r\n");
}

TEST(PathTable, OfNothingSentShowsNoLoss) {
  EXPECT_EQ(pathTable("mypc", {{"192.0.2.7", {0, 0, 0}}}),
            "            Source to Here   This Node/Link\r\n"
            "Hop  RTT    Lost/Sent = Pct  Lost/Sent = Pct  Address\r\n"
            "  0                                           mypc \r\n"
            "                                0/   0 =  0%   |\r\n"
            "  1  ---       0/   0 =  0%     0/   0 =  0%  192.0.2.7 \r\n");
}

}  // namespace
}  // namespace veltrin
