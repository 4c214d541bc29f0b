// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/route_trace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_network.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;

constexpr Microseconds kStart = 1'000'000;

class Trace : public ::testing::Test {
 protected:
  // Sends whatever is due until `until` and hands back hop and number of each.
  std::vector<std::pair<int, int>> sendUntil(Microseconds until) {
    std::vector<std::pair<int, int>> sent;
    while (trace_.nextAt() <= until) {
      now_ = std::max(now_, trace_.nextAt());
      const auto probe = trace_.next(now_);
      trace_.sent(*probe, Sending{SendResult::Sent, now_});
      probes_.push_back(*probe);
      sent.emplace_back(probe->hop, probe->number);
    }
    return sent;
  }

  // Answers the first echo of a hop.
  bool answer(int hop, Microseconds at, std::optional<IcmpError> error = IcmpError::TtlExpired) {
    for (const Probe& probe : probes_) {
      if (probe.hop == hop) {
        Incoming incoming;
        incoming.sequence = probe.sequence;
        incoming.at = at;
        incoming.error = error;
        return trace_.take(incoming);
      }
    }
    ADD_FAILURE() << "hop " << hop << " was not probed";
    return false;
  }

  static int furthestOf(const std::vector<std::pair<int, int>>& sent) {
    int furthest = 0;
    for (const auto& probe : sent) {
      furthest = std::max(furthest, probe.first);
    }
    return furthest;
  }

  ProbeBook book_{30, Patience{}};
  RouteTrace trace_{book_, 30, kStart};
  std::vector<Probe> probes_;
  Microseconds now_ = kStart;
};

TEST_F(Trace, SendsOneProbeAtATime) {
  EXPECT_THAT(sendUntil(kStart + 499), ElementsAre(std::pair(1, 0)));
  EXPECT_THAT(sendUntil(kStart + 500), ElementsAre(std::pair(2, 0)));
}

TEST_F(Trace, SendsTheFirstProbesOfAllHopsBeforeTheSecond) {
  const auto sent = sendUntil(kStart + 4'000);
  ASSERT_EQ(sent.size(), 9U);
  EXPECT_EQ(sent[7], std::pair(8, 0));
  EXPECT_EQ(sent[8], std::pair(1, 1));
}

TEST_F(Trace, LooksNoMoreThanEightHopsAhead) {
  EXPECT_EQ(furthestOf(sendUntil(kStart + 50'000)), 8);
}

TEST_F(Trace, LooksFurtherWhenAHopAnswers) {
  sendUntil(kStart + 20'000);
  answer(3, kStart + 20'000);
  EXPECT_EQ(furthestOf(sendUntil(kStart + 50'000)), 11);
}

TEST_F(Trace, LooksFurtherAfterAQuietWhile) {
  sendUntil(kStart + 20'000);
  EXPECT_EQ(trace_.nextAt(), kStart + 11'500 + 100'000);
  EXPECT_EQ(furthestOf(sendUntil(kStart + 150'000)), 16);
}

TEST_F(Trace, SendsThreeProbesToEachHop) {
  EXPECT_EQ(sendUntil(kStart + 10 * kSecond).size(), 90U);
  EXPECT_EQ(trace_.nextAt(), kNever);
}

TEST_F(Trace, EndsWhereTheDestinationAnswers) {
  sendUntil(kStart + 20'000);
  answer(5, kStart + 20'000, std::nullopt);
  EXPECT_EQ(trace_.end(), 5);
}

TEST_F(Trace, SendsNothingBehindTheEnd) {
  sendUntil(kStart + 3'500);
  answer(2, kStart + 3'500, std::nullopt);
  EXPECT_THAT(sendUntil(kStart + kSecond),
              ElementsAre(std::pair(1, 1), std::pair(2, 1), std::pair(1, 2), std::pair(2, 2)));
}

TEST_F(Trace, EndsAtTheNearestHopAtWhichTheDestinationAnswers) {
  sendUntil(kStart + 20'000);
  answer(7, kStart + 20'000, std::nullopt);
  answer(5, kStart + 20'001, std::nullopt);
  answer(6, kStart + 20'002, std::nullopt);
  EXPECT_EQ(trace_.end(), 5);
}

TEST_F(Trace, EndsWhereARouterRefuses) {
  sendUntil(kStart + 20'000);
  answer(4, kStart + 20'000, IcmpError::HostUnreachable);
  EXPECT_EQ(trace_.end(), 4);
}

TEST_F(Trace, EndsWhereAProbeCannotBeSent) {
  const auto probe = trace_.next(kStart);
  trace_.sent(*probe, Sending{SendResult::Failed, kStart});
  EXPECT_EQ(trace_.end(), 1);
  EXPECT_EQ(trace_.fate(1, 0, kStart), RouteTrace::Fate::Failed);
}

TEST_F(Trace, DoesNotEndBeforeAHopThatIsToldOf) {
  sendUntil(kStart + 20'000);
  trace_.tell(6);
  answer(4, kStart + 20'000, std::nullopt);
  EXPECT_EQ(trace_.end(), 6);
}

TEST_F(Trace, OfASilentProbeLosesItAtItsTimeout) {
  sendUntil(kStart);
  EXPECT_EQ(trace_.fate(1, 0, kStart + 3'999'999), RouteTrace::Fate::Open);
  EXPECT_EQ(trace_.fate(1, 0, kStart + 4'000'000), RouteTrace::Fate::Lost);
}

TEST_F(Trace, OfASilentHopBeforeAQuickOneLosesItsProbeAfterHalfASecond) {
  sendUntil(kStart + 20'000);
  answer(2, kStart + 10'000);
  EXPECT_EQ(trace_.fate(1, 0, kStart + 499'999), RouteTrace::Fate::Open);
  EXPECT_EQ(trace_.fate(1, 0, kStart + 500'000), RouteTrace::Fate::Lost);
}

TEST_F(Trace, LooksFurtherAfterThreeTripsAndAGraceWhenOneHopIsSilent) {
  sendUntil(kStart + 20'000);
  answer(1, kStart + 10'000);
  EXPECT_EQ(furthestOf(sendUntil(kStart + 20'000)), 9);
  EXPECT_EQ(trace_.nextAt(), kStart + 13'000 + Microseconds{3} * 10'000 + 100'000);
}

TEST_F(Trace, TakesALateAnswerToALostProbe) {
  sendUntil(kStart + 20'000);
  answer(2, kStart + 10'000);
  ASSERT_EQ(trace_.fate(1, 0, kStart + 600'000), RouteTrace::Fate::Lost);
  EXPECT_TRUE(answer(1, kStart + 600'000));
  EXPECT_EQ(trace_.fate(1, 0, kStart + 600'000), RouteTrace::Fate::Answered);
}

TEST_F(Trace, KnowsTheFurthestHopThatAnswered) {
  sendUntil(kStart + 20'000);
  EXPECT_EQ(trace_.furthest(), 0);
  answer(6, kStart + 20'000);
  answer(2, kStart + 20'000);
  EXPECT_EQ(trace_.furthest(), 6);
}

TEST_F(Trace, SaysWhichAnswersMeanNothing) {
  sendUntil(kStart);
  EXPECT_TRUE(answer(1, kStart + 1));
  EXPECT_FALSE(answer(1, kStart + 2));
}

}  // namespace
}  // namespace veltrin
