// SPDX-License-Identifier: GPL-3.0-or-later
// The pumping wait.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "frame/clsWaitableTimer.h"
#include "support/simulation.h"
#include "text/statement.h"

namespace veltrin {
namespace {

using Texts = std::vector<std::string>;
using Moments = std::vector<std::int64_t>;

// --- Due times ---

void expectHalves(std::int32_t milliSeconds, std::int32_t low, std::int32_t high) {
  const DueTime due = dueTimeAfter(milliSeconds);
  EXPECT_EQ(due.low, low);
  EXPECT_EQ(due.high, high);
}

TEST(DueTimeAfter, NoTimeIsNow) { expectHalves(0, 0, 0); }
TEST(DueTimeAfter, OneMillisecond) { expectHalves(1, -10'000, -1); }
TEST(DueTimeAfter, ATenthOfASecond) { expectHalves(100, -1'000'000, -1); }
TEST(DueTimeAfter, OneSecond) { expectHalves(1000, -10'000'000, -1); }
TEST(DueTimeAfter, TwoSecondsAndAHalf) { expectHalves(2500, -25'000'000, -1); }
TEST(DueTimeAfter, TheLongestTimeWhoseUnitsFitOneHalf) { expectHalves(429'496, 7'296, -1); }
TEST(DueTimeAfter, TheShortestTimeWhoseUnitsNeedBothHalves) { expectHalves(429'497, -2'704, -2); }
TEST(DueTimeAfter, TheLongestTime) { expectHalves(INT32_MAX, 10'000, -5'000); }
TEST(DueTimeAfter, ATimeBelowZeroIsAPositiveNumberWhichHasPassed) { expectHalves(-1, 10'000, 0); }

TEST(DueTimeAfter, BothHalvesTogetherAreTheNegatedTimeInUnits) {
  for (const std::int32_t milliSeconds :
       {0, 1, 2, 999, 214'748, 214'749, 429'496, 429'497, 858'994, 86'400'000, INT32_MAX, -1,
        -214'749, -429'497, -86'400'000, INT32_MIN}) {
    EXPECT_EQ(dueTimeAfter(milliSeconds).units(), std::int64_t{-10'000} * milliSeconds);
  }
}

// --- The wait ---

class WaitTest : public ::testing::Test {
 protected:
  WaitTest() { loop.keepTimerLog = true; }

  void wait(std::int32_t milliSeconds) { Wait(simulation.platform, milliSeconds); }
  std::int64_t now() const { return loop.milliseconds(); }

  Simulation simulation;
  SimulatedLoop& loop = simulation.loop;
};

TEST_F(WaitTest, ReturnsWhenTheTimeHasPassed) {
  wait(2500);
  EXPECT_EQ(now(), 2500);
}

TEST_F(WaitTest, MakesANamedTimerSetsItTwiceAndClosesIt) {
  wait(1000);
  EXPECT_EQ(loop.timerLog,
            (Texts{"create VeltrinTimer0500", "set -1 -1", "set -10000000 -1", "close"}));
}

TEST_F(WaitTest, TheTimersNameHoldsMinuteAndSecondOfTheStart) {
  loop.run(61'999);
  wait(1);
  EXPECT_EQ(loop.timerLog.front(), "create VeltrinTimer0601");
}

TEST_F(WaitTest, AWaitOfNothingReturnsAtTheFirstCheck) {
  wait(0);
  EXPECT_EQ(now(), 0);
}

TEST_F(WaitTest, AWaitOfNothingPumpsOnce) {
  Texts delivered;
  loop.after(0, [&] {
    delivered.push_back("first");
    loop.after(0, [&] { delivered.push_back("second"); });
  });
  wait(0);
  EXPECT_EQ(delivered, (Texts{"first", "second"}));
  EXPECT_EQ(loop.timerLog, (Texts{"create VeltrinTimer0500", "set -1 -1", "set 0 0", "close"}));
}

TEST_F(WaitTest, AWaitOfATimeBelowZeroReturnsAtTheFirstCheck) {
  wait(-1);
  EXPECT_EQ(now(), 0);
}

TEST_F(WaitTest, AWaitOfSevenMinutesAndMoreLastsItsTime) {
  wait(429'497);
  EXPECT_EQ(now(), 429'497);
}

TEST_F(WaitTest, DeliversWhatComesInAtItsMoment) {
  Moments moments;
  for (const std::int64_t moment : {0, 300, 999}) {
    loop.at(moment, [&] { moments.push_back(now()); });
  }
  wait(1000);
  EXPECT_EQ(moments, (Moments{0, 300, 999}));
}

TEST_F(WaitTest, DeliversWhatComesInAtItsVeryEndBeforeItReturns) {
  bool delivered = false;
  loop.at(1000, [&] { delivered = true; });
  wait(1000);
  EXPECT_TRUE(delivered);
}

TEST_F(WaitTest, LeavesWhatComesInLater) {
  bool delivered = false;
  loop.at(1001, [&] { delivered = true; });
  wait(1000);
  EXPECT_FALSE(delivered);
}

TEST_F(WaitTest, ARoutineThatTakesLongDelaysTheReturn) {
  loop.at(500, [&] { loop.passUntil(4000); });
  wait(1000);
  EXPECT_EQ(now(), 4000);
}

TEST_F(WaitTest, DeliversWhatALongRoutineKeptWaiting) {
  Moments moments;
  loop.at(500, [&] { loop.passUntil(4000); });
  loop.at(2000, [&] { moments.push_back(now()); });
  wait(1000);
  EXPECT_EQ(moments, Moments{4000});
}

// --- Waits inside waits ---

TEST_F(WaitTest, AWaitInsideAWaitReturnsFirst) {
  Moments ends;
  loop.at(1200, [&] {
    wait(300);
    ends.push_back(now());
  });
  wait(2500);
  ends.push_back(now());
  EXPECT_EQ(ends, (Moments{1500, 2500}));
}

TEST_F(WaitTest, AnOuterWaitDoesNotReturnBeforeALongerOneInsideIt) {
  Moments ends;
  loop.at(1200, [&] {
    wait(5000);
    ends.push_back(now());
  });
  wait(2500);
  ends.push_back(now());
  EXPECT_EQ(ends, (Moments{6200, 6200}));
}

TEST_F(WaitTest, ASecondWaitOfOneSecondFindsTheNameInUseAndSetsTheTimerOnlyOnce) {
  loop.at(300, [&] { wait(100); });
  wait(1000);
  EXPECT_EQ(loop.timerLog, (Texts{"create VeltrinTimer0500", "set -1 -1", "set -10000000 -1",
                                  "create VeltrinTimer0500", "set -1000000 -1", "close", "close"}));
}

TEST_F(WaitTest, TwoWaitsOfOneSecondShareTheTimerSoThatTheInnerTimeHoldsForBoth) {
  Moments ends;
  loop.at(300, [&] {
    wait(100);
    ends.push_back(now());
  });
  wait(1000);
  ends.push_back(now());
  EXPECT_EQ(ends, (Moments{400, 400}));
}

TEST_F(WaitTest, ANameIsFreeAgainWhenItsTimerWasClosed) {
  wait(100);
  loop.timerLog.clear();
  wait(100);
  EXPECT_EQ(loop.timerLog,
            (Texts{"create VeltrinTimer0500", "set -1 -1", "set -1000000 -1", "close"}));
}

// --- Failures ---

TEST_F(WaitTest, AFailureIsRaisedAgainWithItsNumberAndSourceBehindAPrefix) {
  loop.failNextTimer = true;
  try {
    wait(1000);
    FAIL() << "the wait did not fail";
  } catch (const StatementFailed& failure) {
    EXPECT_STREQ(failure.what(), "[clsWaitableTimer.Wait]No timer to be had");
    EXPECT_EQ(failure.number(), 8);
    EXPECT_EQ(failure.source(), "CreateWaitableTimer");
  }
}

TEST_F(WaitTest, AWaitWithoutATimerHasNothingToClose) {
  loop.failNextTimer = true;
  EXPECT_THROW(wait(1000), StatementFailed);
  EXPECT_EQ(loop.timerLog, Texts{});
}

TEST_F(WaitTest, AWaitAfterAFailedOneWorks) {
  loop.failNextTimer = true;
  EXPECT_THROW(wait(1000), StatementFailed);
  wait(1000);
  EXPECT_EQ(now(), 1000);
}

// Timers of the loop that can be made but not waited for.
class BrokenTimers : public WaitableTimers {
 public:
  explicit BrokenTimers(SimulatedLoop& loop) : loop_(loop) {}
  Handle create(const std::string& name, std::uint32_t& lastError) override {
    return loop_.create(name, lastError);
  }
  void set(Handle timer, DueTime due) override { loop_.set(timer, due); }
  bool waitOrMessage(Handle) override { throw StatementFailed("Wait failed", 6, "MsgWait"); }
  void close(Handle timer) override { loop_.close(timer); }

 private:
  SimulatedLoop& loop_;
};

TEST_F(WaitTest, AWaitThatFailsMidwayClosesItsTimer) {
  BrokenTimers broken(loop);
  Platform platform{loop,
                    broken,
                    simulation.clock,
                    simulation.desktop,
                    simulation.files,
                    simulation.processes,
                    simulation.profiles,
                    simulation.registry,
                    simulation.shell,
                    simulation.environment,
                    simulation.sockets,
                    simulation.counters,
                    simulation.wmi,
                    simulation.icmp,
                    simulation.downloads,
                    simulation.interfaces,
                    simulation.printers,
                    simulation.drives,
                    simulation.processList,
                    "Veltrin"};
  EXPECT_THROW(Wait(platform, 1000), StatementFailed);
  EXPECT_EQ(loop.timerLog.back(), "close");
}

TEST_F(WaitTest, AFailingRoutineInsideAWaitDoesNotEndTheWait) {
  loop.at(300, [] { throw StatementFailed("of the routine"); });
  wait(1000);
  EXPECT_EQ(now(), 1000);
  EXPECT_EQ(loop.gate().escapedFailures(), 1);
}

// --- The program's end ---

TEST_F(WaitTest, UnwindsWhenTheProgramEndsAndClosesItsTimer) {
  loop.at(300, [&] { loop.gate().end(); });
  EXPECT_THROW(wait(1000), ProgramEnded);
  EXPECT_EQ(now(), 300);
  EXPECT_EQ(loop.timerLog.back(), "close");
}

TEST_F(WaitTest, AllNestedWaitsUnwindWhenTheProgramEnds) {
  Texts reached;
  loop.at(100, [&] {
    wait(20'000);
    reached.push_back("behind the inner wait");
  });
  loop.at(1300, [&] { loop.gate().end(); });
  EXPECT_THROW(wait(10'000), ProgramEnded);
  EXPECT_EQ(reached, Texts{});
  EXPECT_EQ(now(), 1300);
  EXPECT_EQ(std::count(loop.timerLog.begin(), loop.timerLog.end(), "close"), 2);
}

TEST_F(WaitTest, AWaitThatStartsBehindTheProgramsEndUnwindsAtOnce) {
  loop.gate().end();
  EXPECT_THROW(wait(10'000), ProgramEnded);
  EXPECT_EQ(now(), 0);
}

TEST_F(WaitTest, NoSkippedStatementHoldsTheUnwindingUp) {
  loop.gate().end();
  EXPECT_THROW(skip([&] { wait(1000); }), ProgramEnded);
}

}  // namespace
}  // namespace veltrin
