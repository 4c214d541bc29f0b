// SPDX-License-Identifier: GPL-3.0-or-later
// When the timers of the loaded windows tick.
#include "platform/timer_schedule.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "support/simulation.h"
#include "text/statement.h"

namespace veltrin {
namespace {

using Moments = std::vector<std::int64_t>;
using Texts = std::vector<std::string>;

// Two windows with a clock each.
class ClockWindow : public Form {
 public:
  ClockWindow(const std::string& name, Program& program) : Form(name, program) {
    own("Timer1", Timer1);
  }
  Timer Timer1;
};

class FirstClock : public ClockWindow {
 public:
  explicit FirstClock(Program& program) : ClockWindow("FirstClock", program) {}
};

class SecondClock : public ClockWindow {
 public:
  explicit SecondClock(Program& program) : ClockWindow("SecondClock", program) {}
};

class Schedule : public ::testing::Test {
 protected:
  Schedule() {
    timer.timer = [this] { tickNow(); };
  }

  void tickNow() { ticks.push_back(now()); }
  std::int64_t now() const { return loop.milliseconds(); }

  // Starts the timer now.
  void start(int interval) { timer.interval = interval; }

  // A routine that lets no event in for a time, as one that waits for a child does.
  void blockAt(std::int64_t moment, std::int64_t until) {
    loop.at(moment, [this, until] { loop.passUntil(until); });
  }

  Simulation simulation;
  SimulatedLoop& loop = simulation.loop;
  Program& program = simulation.program();
  std::shared_ptr<FirstClock> window = program.show<FirstClock>();
  Timer& timer = window->Timer1;
  Moments ticks;
};

// --- The schedule ---

TEST_F(Schedule, TicksEveryIntervalFromTheMomentOfItsStart) {
  loop.run(300);
  start(1000);
  loop.run(3400);
  EXPECT_EQ(ticks, (Moments{1300, 2300, 3300}));
}

TEST_F(Schedule, ATimerWithoutAnIntervalStandsStill) {
  loop.run(100'000);
  EXPECT_EQ(ticks, Moments{});
}

TEST_F(Schedule, ADisabledTimerDoesNotTick) {
  timer.enabled = false;
  start(1000);
  loop.run(5000);
  EXPECT_EQ(ticks, Moments{});
}

TEST_F(Schedule, EnablingStartsTheScheduleAnew) {
  timer.enabled = false;
  start(1000);
  loop.at(700, [&] { timer.enabled = true; });
  loop.run(3000);
  EXPECT_EQ(ticks, (Moments{1700, 2700}));
}

TEST_F(Schedule, DisablingAndEnablingStartsTheScheduleAnew) {
  start(1000);
  loop.at(1600, [&] {
    timer.enabled = false;
    timer.enabled = true;
  });
  loop.run(3700);
  EXPECT_EQ(ticks, (Moments{1000, 2600, 3600}));
}

TEST_F(Schedule, AChangeOfTheIntervalStartsTheScheduleAnew) {
  start(1000);
  loop.at(1600, [&] { timer.interval = 400; });
  loop.run(2500);
  EXPECT_EQ(ticks, (Moments{1000, 2000, 2400}));
}

TEST_F(Schedule, AssigningTheSameIntervalChangesNothing) {
  start(1000);
  loop.at(1600, [&] { timer.interval = 1000; });
  loop.run(2500);
  EXPECT_EQ(ticks, (Moments{1000, 2000}));
}

TEST_F(Schedule, AnIntervalOfZeroStopsTheTimer) {
  start(1000);
  loop.at(1600, [&] { timer.interval = 0; });
  loop.run(5000);
  EXPECT_EQ(ticks, Moments{1000});
}

TEST_F(Schedule, DisablingItselfInItsRoutineStopsTheTimer) {
  timer.timer = [&] {
    tickNow();
    timer.enabled = false;
  };
  start(1000);
  loop.run(5000);
  EXPECT_EQ(ticks, Moments{1000});
}

TEST_F(Schedule, ChangingItsIntervalInItsRoutineCountsFromThere) {
  timer.timer = [&] {
    tickNow();
    timer.interval = 300;
  };
  start(1000);
  loop.run(1700);
  EXPECT_EQ(ticks, (Moments{1000, 1300, 1600}));
}

TEST_F(Schedule, ATimerThatRunsFromItsDesignCountsFromTheLoad) {
  class Running : public ClockWindow {
   public:
    explicit Running(Program& owner) : ClockWindow("Running", owner) { Timer1.interval = 1000; }
  };
  loop.run(250);
  const auto running = program.show<Running>();
  running->Timer1.timer = [&] { tickNow(); };
  loop.run(2300);
  EXPECT_EQ(ticks, (Moments{1250, 2250}));
}

// --- Its own routine on the stack ---

TEST_F(Schedule, ATickDueWhileItsOwnRoutineWaitsIsDropped) {
  timer.timer = [&] {
    tickNow();
    program.Wait(1500);
  };
  start(1000);
  loop.run(5900);
  EXPECT_EQ(ticks, (Moments{1000, 3000, 5000}));
}

TEST_F(Schedule, ATickDueWhileItsOwnRoutineBlocksIsDropped) {
  timer.timer = [&] {
    tickNow();
    loop.passUntil(now() + 1500);
  };
  start(1000);
  loop.run(5900);
  EXPECT_EQ(ticks, (Moments{1000, 3000, 5000}));
}

TEST_F(Schedule, ATickDueWhenItsOwnRoutineReturnsIsDropped) {
  timer.timer = [&] {
    tickNow();
    loop.passUntil(now() + 1000);
  };
  start(1000);
  loop.run(3500);
  EXPECT_EQ(ticks, (Moments{1000, 3000}));
}

TEST_F(Schedule, ARestartInItsOwnRoutineStillDropsWhatFallsDueBeforeItReturns) {
  timer.timer = [&] {
    tickNow();
    timer.interval = 400;
    program.Wait(1000);
  };
  start(1000);
  loop.run(2300);
  EXPECT_EQ(ticks, (Moments{1000, 2200}));
}

TEST_F(Schedule, TicksAgainAfterItsRoutineFailed) {
  timer.timer = [&] {
    tickNow();
    throw StatementFailed("of the routine");
  };
  start(1000);
  loop.run(2500);
  EXPECT_EQ(ticks, (Moments{1000, 2000}));
  EXPECT_EQ(loop.gate().escapedFailures(), 2);
}

// --- Another routine on the stack ---

TEST_F(Schedule, TicksInsideAnotherRoutineThatWaits) {
  start(1000);
  Moments routine;
  loop.at(500, [&] {
    program.Wait(2000);
    routine.push_back(now());
  });
  loop.run(2600);
  EXPECT_EQ(ticks, (Moments{1000, 2000}));
  EXPECT_EQ(routine, Moments{2500});
}

TEST_F(Schedule, ATickDueWhileAnotherRoutineBlocksWaitsOnceAndKeepsTheSchedule) {
  start(1000);
  blockAt(500, 3700);
  loop.run(5100);
  EXPECT_EQ(ticks, (Moments{3700, 4000, 5000}));
}

TEST_F(Schedule, DisablingCancelsAWaitingTick) {
  start(1000);
  loop.at(500, [&] {
    loop.passUntil(1500);
    timer.enabled = false;
  });
  loop.run(5000);
  EXPECT_EQ(ticks, Moments{});
}

TEST_F(Schedule, ARestartCancelsAWaitingTickAndCountsFromThere) {
  start(1000);
  loop.at(500, [&] {
    loop.passUntil(1500);
    timer.enabled = false;
    timer.enabled = true;
  });
  loop.run(3600);
  EXPECT_EQ(ticks, (Moments{2500, 3500}));
}

TEST_F(Schedule, AChangeOfTheIntervalCancelsAWaitingTick) {
  start(1000);
  loop.at(500, [&] {
    loop.passUntil(1500);
    timer.interval = 800;
  });
  loop.run(3200);
  EXPECT_EQ(ticks, (Moments{2300, 3100}));
}

// --- Windows come and go ---

TEST_F(Schedule, TimersOfOneMomentTickInTheOrderOfTheirWindows) {
  const auto second = program.show<SecondClock>();
  Texts order;
  timer.timer = [&] { order.push_back("first"); };
  second->Timer1.timer = [&] { order.push_back("second"); };
  second->Timer1.interval = 1000;
  start(1000);
  loop.run(1000);
  EXPECT_EQ(order, (Texts{"first", "second"}));
}

TEST_F(Schedule, AnUnloadedWindowDoesNotTick) {
  program.show<SecondClock>();
  start(1000);
  loop.at(1500, [&] { window->unload(); });
  loop.run(5000);
  EXPECT_EQ(ticks, Moments{1000});
}

TEST_F(Schedule, AWindowUnloadedWithAWaitingTickDoesNotTick) {
  program.show<SecondClock>();
  start(1000);
  loop.at(500, [&] {
    loop.passUntil(1500);
    window->unload();
  });
  loop.run(5000);
  EXPECT_EQ(ticks, Moments{});
}

TEST_F(Schedule, AWaitingTickOfAWindowThatIsGoneIsPassedOver) {
  std::weak_ptr<SecondClock> gone = program.show<SecondClock>();
  gone.lock()->Timer1.interval = 1000;
  loop.at(500, [&] {
    loop.passUntil(1500);
    gone.lock()->unload();
  });
  loop.run(5000);
  EXPECT_TRUE(gone.expired());
  EXPECT_EQ(loop.gate().escapedFailures(), 0);
}

TEST_F(Schedule, ATickThatUnloadsAnotherWindowDueAtThatMomentTakesItsTickAlong) {
  std::weak_ptr<SecondClock> second = program.show<SecondClock>();
  second.lock()->Timer1.timer = [&] { tickNow(); };
  second.lock()->Timer1.interval = 1000;
  timer.timer = [&] {
    if (const auto other = second.lock()) other->unload();
  };
  start(1000);
  loop.run(3000);
  EXPECT_TRUE(second.expired());
  EXPECT_EQ(ticks, Moments{});
}

TEST_F(Schedule, ATickThatUnloadsItsOwnWindowIsItsLast) {
  program.show<SecondClock>();
  timer.timer = [&] {
    tickNow();
    window->unload();
  };
  start(1000);
  loop.run(5000);
  EXPECT_EQ(ticks, Moments{1000});
}

TEST_F(Schedule, AnUnloadedWindowsTimerNoLongerStartsASchedule) {
  program.show<SecondClock>();
  window->unload();
  timer.interval = 1000;
  EXPECT_EQ(loop.timers().nextDue(), std::nullopt);
}

// --- What a loop asks ---

TEST_F(Schedule, NothingIsDueWhenNoTimerRuns) { EXPECT_EQ(loop.timers().nextDue(), std::nullopt); }

TEST_F(Schedule, TheNextDueTickIsTheEarliestOfAllTimers) {
  const auto second = program.show<SecondClock>();
  start(1000);
  second->Timer1.interval = 400;
  EXPECT_EQ(loop.timers().nextDue(), 400);
}

TEST_F(Schedule, TellsOfEveryChangeOfTheNextTick) {
  int told = 0;
  loop.timers().onReschedule([&] { ++told; });
  start(1000);
  EXPECT_EQ(told, 1);
  timer.enabled = false;
  EXPECT_EQ(told, 2);
  timer.enabled = true;
  EXPECT_EQ(told, 3);
  window->unload();
  EXPECT_EQ(told, 4);
}

// --- A loop that comes late ---

class NoHost : public FormHost {
 public:
  void unload(Form&) override {}
};

class BareClock : public Form {
 public:
  explicit BareClock(FormHost& host) : Form("BareClock", host) { own("Timer1", Timer1); }
  Timer Timer1;
};

// A schedule whose clock is set by hand, so that nobody looks at it meanwhile.
class LateLoop : public ::testing::Test {
 protected:
  LateLoop() {
    schedule.add(window);
    window->load();
    window->Timer1.timer = [this] { ticks.push_back(now); };
    window->Timer1.interval = 1000;
  }

  void runDueAt(std::int64_t moment) {
    now = moment;
    const EventGate::Opening opening(gate);
    schedule.runDue();
  }

  std::int64_t now = 0;
  EventGate gate;
  NoHost host;
  std::shared_ptr<BareClock> window = std::make_shared<BareClock>(host);
  TimerSchedule schedule{gate, [this] { return now; }};
  Moments ticks;
};

TEST_F(LateLoop, KeepsTheScheduleBehindALateTick) {
  runDueAt(1250);
  EXPECT_EQ(ticks, Moments{1250});
  EXPECT_EQ(schedule.nextDue(), 2000);
}

TEST_F(LateLoop, TicksOnceForAllThatItMissed) {
  runDueAt(4100);
  EXPECT_EQ(ticks, Moments{4100});
  EXPECT_EQ(schedule.nextDue(), 5000);
}

TEST_F(LateLoop, DropsATickThatFellDueInItsOwnRoutineThoughNobodyPumpedMeanwhile) {
  window->Timer1.timer = [this] {
    ticks.push_back(now);
    now += 1500;
  };
  runDueAt(1000);
  runDueAt(2999);
  EXPECT_EQ(ticks, Moments{1000});
  EXPECT_EQ(schedule.nextDue(), 3000);
}

}  // namespace
}  // namespace veltrin
