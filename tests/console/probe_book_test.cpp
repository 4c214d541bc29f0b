// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/probe_book.h"

#include <gtest/gtest.h>

#include "fake_network.h"

namespace veltrin {
namespace {

constexpr Microseconds kStart = 1'000'000;

class Book : public ::testing::Test {
 protected:
  Probe sendTo(int hop, int number = 0) {
    const Probe probe = book_.enter(hop, number);
    book_.left(probe, kStart);
    return probe;
  }

  static Incoming answerTo(const Probe& probe, Microseconds trip,
                           std::optional<IcmpError> error = IcmpError::TtlExpired) {
    Incoming incoming;
    incoming.sequence = probe.sequence;
    incoming.from = addressOf("203.0.113.9");
    incoming.at = kStart + trip;
    incoming.error = error;
    return incoming;
  }

  ProbeBook book_{30, Patience{}};
};

TEST_F(Book, MatchesAnAnswerToItsProbe) {
  sendTo(1);
  const Probe probe = sendTo(2, 1);
  const auto answer = book_.take(answerTo(probe, 4'000));
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->hop, 2);
  EXPECT_EQ(answer->number, 1);
  EXPECT_EQ(answer->trip, 4'000);
  EXPECT_EQ(answer->from, addressOf("203.0.113.9"));
}

TEST_F(Book, ReadsWhatAnAnswerMeans) {
  EXPECT_EQ(book_.take(answerTo(sendTo(1), 1, IcmpError::TtlExpired))->meaning, Meaning::Passing);
  EXPECT_EQ(book_.take(answerTo(sendTo(1), 1, std::nullopt))->meaning, Meaning::Arrival);
  EXPECT_EQ(book_.take(answerTo(sendTo(1), 1, IcmpError::NetUnreachable))->meaning,
            Meaning::Refusal);
  EXPECT_EQ(book_.take(answerTo(sendTo(1), 1, IcmpError::TooBig))->meaning, Meaning::Refusal);
}

TEST_F(Book, LeavesAProbeOpenAfterANoticeThatIsNoAnswer) {
  const Probe probe = sendTo(1);
  EXPECT_FALSE(book_.take(answerTo(probe, 1, IcmpError::Other)));
  EXPECT_TRUE(book_.take(answerTo(probe, 2)));
}

TEST_F(Book, TakesNoSecondAnswerToAProbe) {
  const Probe probe = sendTo(1);
  book_.take(answerTo(probe, 1));
  EXPECT_FALSE(book_.take(answerTo(probe, 2)));
}

TEST_F(Book, TakesNoAnswerToWhatItDidNotSend) {
  const Probe probe = sendTo(1);
  EXPECT_FALSE(
      book_.take(answerTo(Probe{1, 0, static_cast<std::uint16_t>(probe.sequence + 1)}, 1)));
}

TEST_F(Book, TakesAnAnswerAtTheTimeoutAndNoneBehindIt) {
  EXPECT_TRUE(book_.take(answerTo(sendTo(1), 4'000'000)));
  EXPECT_FALSE(book_.take(answerTo(sendTo(1), 4'000'001)));
}

TEST_F(Book, TakesNoAnswerToAClosedProbe) {
  const Probe probe = sendTo(1);
  book_.closeAll();
  EXPECT_FALSE(book_.take(answerTo(probe, 1)));
}

TEST_F(Book, CountsNoTripAsLessThanNothing) {
  EXPECT_EQ(book_.take(answerTo(sendTo(1), -50))->trip, 0);
}

TEST_F(Book, GivesANumberThatComesRoundToTheNewProbe) {
  const Probe old = sendTo(1);
  for (int i = 0; i < 65535; ++i) {
    book_.enter(2, 0);
  }
  const Probe young = sendTo(3);
  ASSERT_EQ(young.sequence, old.sequence);
  EXPECT_EQ(book_.take(answerTo(young, 1))->hop, 3);
}

TEST_F(Book, WaitsAllOfTheTimeoutWhileNobodyFurtherHasAnswered) {
  book_.take(answerTo(sendTo(4), 10'000));
  EXPECT_EQ(book_.patienceFor(5), 4'000'000);
}

TEST_F(Book, WaitsForASilentHopTenTripsOfTheNextOneThatAnswered) {
  book_.take(answerTo(sendTo(2), 90'000));
  book_.take(answerTo(sendTo(5), 60'000));
  book_.take(answerTo(sendTo(7), 70'000));
  EXPECT_EQ(book_.patienceFor(3), 600'000);
}

TEST_F(Book, WaitsHalfASecondForASilentHopHoweverNearTheNextOneIs) {
  book_.take(answerTo(sendTo(5), 1'000));
  EXPECT_EQ(book_.patienceFor(3), 500'000);
}

TEST_F(Book, WaitsForAHopThatHasAnsweredThreeOfItsTripsAndAGrace) {
  book_.take(answerTo(sendTo(5), 10'000));
  EXPECT_EQ(book_.patienceFor(5), 430'000);
}

TEST_F(Book, WaitsByTheLongestTripOfAHop) {
  book_.take(answerTo(sendTo(5), 80'000));
  book_.take(answerTo(sendTo(5), 10'000));
  EXPECT_EQ(book_.patienceFor(4), 800'000);
}

TEST_F(Book, NeverWaitsLongerThanTheTimeout) {
  book_.take(answerTo(sendTo(5), 1'300'000));
  EXPECT_EQ(book_.patienceFor(4), 4'000'000);
  EXPECT_EQ(book_.patienceFor(5), 4'000'000);
}

TEST_F(Book, KeepsToAnExactTimeoutWhoeverHasAnswered) {
  ProbeBook exact(30, Patience{2 * kSecond, true});
  const Probe probe = exact.enter(5, 0);
  exact.left(probe, kStart);
  exact.take(answerTo(probe, 10'000));
  EXPECT_EQ(exact.patienceFor(5), 2'000'000);
  EXPECT_EQ(exact.patienceFor(4), 2'000'000);
}

TEST_F(Book, FindsAWaitWorthForHopsThatHaveAnsweredAndWithAnExactTimeoutForAll) {
  book_.take(answerTo(sendTo(5), 10'000));
  EXPECT_TRUE(book_.isWorthAWait(5));
  EXPECT_FALSE(book_.isWorthAWait(4));
  EXPECT_TRUE(ProbeBook(30, Patience{2 * kSecond, true}).isWorthAWait(4));
}

TEST_F(Book, CountsTheProbesThatAreStillWorthWaitingFor) {
  sendTo(3);
  sendTo(3);
  sendTo(4);
  EXPECT_EQ(book_.underWay(3, kStart + 3'999'999), 2);
  EXPECT_EQ(book_.underWay(3, kStart + 4'000'000), 0);
}

TEST_F(Book, KnowsWhenAHopIsSettled) {
  sendTo(3);
  EXPECT_EQ(book_.settledAt(3), kStart + 4'000'000);
  EXPECT_EQ(book_.settledAt(4), 0);
}

}  // namespace
}  // namespace veltrin
