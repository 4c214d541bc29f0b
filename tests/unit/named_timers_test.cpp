// SPDX-License-Identifier: GPL-3.0-or-later
// The bookkeeping of waitable timers by name.
#include "platform/portable/named_timers.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>

#include "text/statement.h"

namespace veltrin {
namespace {

constexpr DueTime kAtOnce{-1, -1};                 // 100 nanoseconds
constexpr DueTime kOneMillisecond{-10'000, -1};    // 10000 units
constexpr DueTime kLongBeyondOneHalf{-2'704, -2};  // 429497 ms
constexpr DueTime kOfTheCalendar{10'000, 0};
constexpr DueTime kNow{0, 0};

class NamedTimersTest : public ::testing::Test {
 protected:
  NamedTimers::Handle create(const std::string& name) {
    std::uint32_t error = 0;
    return timers.create(name, error);
  }

  // The error that a creation under the name tells.
  std::uint32_t errorOf(const std::string& name) {
    std::uint32_t error = 12345;
    timers.create(name, error);
    return error;
  }

  std::int64_t now = 5'000;  // ns
  NamedTimers timers{[this] { return now; }};
};

TEST_F(NamedTimersTest, ANewNameTellsNoError) { EXPECT_EQ(errorOf("one"), 0U); }

TEST_F(NamedTimersTest, ANameInUseTellsSo) {
  create("one");
  EXPECT_EQ(errorOf("one"), 183U);
}

TEST_F(NamedTimersTest, AnotherNameIsNotInUse) {
  create("one");
  EXPECT_EQ(errorOf("two"), 0U);
}

TEST_F(NamedTimersTest, HandlesOfOneNameDiffer) { EXPECT_NE(create("one"), create("one")); }

TEST_F(NamedTimersTest, NoHandleIsZero) { EXPECT_NE(create("one"), 0); }

TEST_F(NamedTimersTest, ATimerThatWasNeverSetNeverFires) {
  const auto timer = create("one");
  now = INT64_MAX - 1;
  EXPECT_FALSE(timers.hasFired(timer));
  EXPECT_EQ(timers.dueAt(timer), INT64_MAX);
}

TEST_F(NamedTimersTest, FiresWhenItsTimeHasPassedAndNotBefore) {
  const auto timer = create("one");
  timers.set(timer, kOneMillisecond);
  now = 1'004'999;
  EXPECT_FALSE(timers.hasFired(timer));
  now = 1'005'000;
  EXPECT_TRUE(timers.hasFired(timer));
}

TEST_F(NamedTimersTest, StaysFired) {
  const auto timer = create("one");
  timers.set(timer, kAtOnce);
  now += 100;
  EXPECT_TRUE(timers.hasFired(timer));
  EXPECT_TRUE(timers.hasFired(timer));
}

TEST_F(NamedTimersTest, TellsWhenItFires) {
  const auto timer = create("one");
  timers.set(timer, kLongBeyondOneHalf);
  EXPECT_EQ(timers.dueAt(timer), 5'000 + 429'497'000'000);
}

TEST_F(NamedTimersTest, ADueTimeOfZeroHasPassed) {
  const auto timer = create("one");
  timers.set(timer, kNow);
  EXPECT_TRUE(timers.hasFired(timer));
}

TEST_F(NamedTimersTest, ADueTimeOfTheCalendarHasPassed) {
  const auto timer = create("one");
  timers.set(timer, kOfTheCalendar);
  EXPECT_TRUE(timers.hasFired(timer));
}

TEST_F(NamedTimersTest, TheFarthestDueTimeLiesAhead) {
  const auto timer = create("one");
  timers.set(timer, {1, INT32_MIN});
  EXPECT_FALSE(timers.hasFired(timer));
  EXPECT_GT(timers.dueAt(timer), now);
}

TEST_F(NamedTimersTest, SettingAFiredTimerTakesItBack) {
  const auto timer = create("one");
  timers.set(timer, kNow);
  timers.set(timer, kOneMillisecond);
  EXPECT_FALSE(timers.hasFired(timer));
}

TEST_F(NamedTimersTest, SettingThroughOneHandleSetsTheTimerForAllOfItsName) {
  const auto first = create("one");
  const auto second = create("one");
  timers.set(first, kOneMillisecond);
  timers.set(second, kNow);
  EXPECT_TRUE(timers.hasFired(first));
}

TEST_F(NamedTimersTest, TimersOfTwoNamesAreApart) {
  const auto first = create("one");
  const auto second = create("two");
  timers.set(first, kOneMillisecond);
  timers.set(second, kNow);
  EXPECT_FALSE(timers.hasFired(first));
}

TEST_F(NamedTimersTest, ATimerLivesUntilItsLastHandleIsClosed) {
  const auto first = create("one");
  const auto second = create("one");
  timers.set(first, kNow);
  timers.close(first);
  EXPECT_TRUE(timers.hasFired(second));
  EXPECT_EQ(errorOf("one"), 183U);
}

TEST_F(NamedTimersTest, ANameIsFreeWhenItsLastHandleIsClosed) {
  const auto first = create("one");
  const auto second = create("one");
  timers.close(first);
  timers.close(second);
  EXPECT_EQ(errorOf("one"), 0U);
}

TEST_F(NamedTimersTest, ATimerOfAFreedNameStartsUnset) {
  const auto first = create("one");
  timers.set(first, kNow);
  timers.close(first);
  EXPECT_FALSE(timers.hasFired(create("one")));
}

TEST_F(NamedTimersTest, AClosedHandleFails) {
  const auto timer = create("one");
  timers.close(timer);
  EXPECT_THROW(timers.set(timer, kNow), StatementFailed);
  EXPECT_THROW(timers.hasFired(timer), StatementFailed);
  EXPECT_THROW(timers.dueAt(timer), StatementFailed);
}

TEST_F(NamedTimersTest, TheFailureOfAHandleBearsTheSystemsNumber) {
  try {
    timers.set(77, kNow);
    FAIL() << "the handle is not open";
  } catch (const StatementFailed& failure) {
    EXPECT_EQ(failure.number(), 6);
  }
}

TEST_F(NamedTimersTest, ClosingAHandleTwiceDoesNothing) {
  const auto timer = create("one");
  timers.close(timer);
  EXPECT_NO_THROW(timers.close(timer));
}

}  // namespace
}  // namespace veltrin
