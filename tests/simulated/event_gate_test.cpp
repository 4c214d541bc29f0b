// SPDX-License-Identifier: GPL-3.0-or-later
// The gate through which all events reach the event routines.
#include "platform/event_gate.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "text/statement.h"

namespace veltrin {
namespace {

using Texts = std::vector<std::string>;

class Gate : public ::testing::Test {
 protected:
  // A routine that writes its name down.
  EventGate::Routine named(const std::string& name) {
    return [this, name] { log.push_back(name); };
  }

  // Opens the gate for a moment.
  void yield() { const EventGate::Opening opening(gate); }

  EventGate gate;
  Texts log;
};

// --- Open and closed ---

TEST_F(Gate, IsClosedAtFirst) {
  EXPECT_FALSE(gate.isOpen());
  gate.post(named("one"));
  EXPECT_EQ(log, Texts{});
}

TEST_F(Gate, DeliversWhatWaitedInOrderWhenItOpens) {
  gate.post(named("one"));
  gate.post(named("two"));
  gate.post(named("three"));
  yield();
  EXPECT_EQ(log, (Texts{"one", "two", "three"}));
}

TEST_F(Gate, DeliversAtOnceWhileItIsOpen) {
  const EventGate::Opening opening(gate);
  gate.post(named("one"));
  EXPECT_EQ(log, Texts{"one"});
}

TEST_F(Gate, DeliversEveryRoutineOnce) {
  gate.post(named("one"));
  yield();
  yield();
  EXPECT_EQ(log, Texts{"one"});
}

TEST_F(Gate, ClosesWhenTheOpeningEnds) {
  yield();
  EXPECT_FALSE(gate.isOpen());
}

TEST_F(Gate, TellsWhetherSomethingWaits) {
  EXPECT_FALSE(gate.hasWaiting());
  gate.post(named("one"));
  EXPECT_TRUE(gate.hasWaiting());
  yield();
  EXPECT_FALSE(gate.hasWaiting());
}

// --- Routines close it ---

TEST_F(Gate, IsClosedWhileARoutineRuns) {
  bool open = true;
  gate.post([&] { open = gate.isOpen(); });
  yield();
  EXPECT_FALSE(open);
}

TEST_F(Gate, IsOpenAgainBehindARoutineUntilTheOpeningEnds) {
  const EventGate::Opening opening(gate);
  gate.post(named("one"));
  EXPECT_TRUE(gate.isOpen());
}

TEST_F(Gate, WhatARoutinePostsComesBehindItsEnd) {
  gate.post([&] {
    log.push_back("starts");
    gate.post(named("posted"));
    log.push_back("ends");
  });
  yield();
  EXPECT_EQ(log, (Texts{"starts", "ends", "posted"}));
}

TEST_F(Gate, WhatARoutinePostsComesBehindWhatWaitedBefore) {
  gate.post([&] { gate.post(named("posted")); });
  gate.post(named("waited"));
  yield();
  EXPECT_EQ(log, (Texts{"waited", "posted"}));
}

TEST_F(Gate, ARoutineThatOpensItLetsTheOthersRunInsideIt) {
  gate.post([&] {
    log.push_back("starts");
    yield();
    log.push_back("ends");
  });
  gate.post(named("inside"));
  yield();
  EXPECT_EQ(log, (Texts{"starts", "inside", "ends"}));
}

TEST_F(Gate, IsClosedAgainForARoutineThatOpenedIt) {
  bool open = true;
  gate.post([&] {
    yield();
    open = gate.isOpen();
  });
  yield();
  EXPECT_FALSE(open);
}

TEST_F(Gate, OpeningsNestAsDeepAsRoutinesOpenIt) {
  const auto nesting = [this](const std::string& name) {
    return [this, name] {
      log.push_back(name + " starts");
      yield();
      log.push_back(name + " ends");
    };
  };
  gate.post(nesting("one"));
  gate.post(nesting("two"));
  gate.post(nesting("three"));
  yield();
  EXPECT_EQ(log, (Texts{"one starts", "two starts", "three starts", "three ends", "two ends",
                        "one ends"}));
}

TEST_F(Gate, AnOpeningInsideAnotherLeavesTheOuterOneOpen) {
  const EventGate::Opening opening(gate);
  yield();
  EXPECT_TRUE(gate.isOpen());
}

// --- Failures ---

TEST_F(Gate, AnEscapedFailureIsCountedAndTheNextRoutineStillRuns) {
  gate.post([] { throw StatementFailed("one"); });
  gate.post(named("next"));
  gate.post([] { throw StatementFailed("two"); });
  yield();
  EXPECT_EQ(log, Texts{"next"});
  EXPECT_EQ(gate.escapedFailures(), 2);
  EXPECT_FALSE(gate.hasEnded());
}

TEST_F(Gate, IsOpenBehindAnEscapedFailure) {
  const EventGate::Opening opening(gate);
  gate.post([] { throw StatementFailed("one"); });
  EXPECT_TRUE(gate.isOpen());
}

TEST_F(Gate, CountsNoFailureInARoutineThatSkipsIt) {
  gate.post([] { skip([] { throw StatementFailed("one"); }); });
  yield();
  EXPECT_EQ(gate.escapedFailures(), 0);
}

// --- The program's end ---

TEST_F(Gate, DeliversNothingThatWaitedWhenTheProgramEnds) {
  gate.post(named("one"));
  gate.end();
  yield();
  EXPECT_EQ(log, Texts{});
  EXPECT_FALSE(gate.hasWaiting());
}

TEST_F(Gate, DeliversNothingBehindTheRoutineThatEndsTheProgram) {
  gate.post([&] { gate.end(); });
  gate.post(named("next"));
  yield();
  EXPECT_EQ(log, Texts{});
}

TEST_F(Gate, TakesNothingInBehindTheProgramsEnd) {
  gate.end();
  const EventGate::Opening opening(gate);
  gate.post(named("late"));
  EXPECT_EQ(log, Texts{});
}

TEST_F(Gate, ARoutineThatIsUnwoundByTheProgramsEndEndsIt) {
  gate.post([] { throw ProgramEnded{}; });
  gate.post(named("next"));
  yield();
  EXPECT_TRUE(gate.hasEnded());
  EXPECT_EQ(log, Texts{});
}

TEST_F(Gate, TheProgramsEndIsNoEscapedFailure) {
  gate.post([] { throw ProgramEnded{}; });
  yield();
  EXPECT_EQ(gate.escapedFailures(), 0);
}

TEST_F(Gate, UnwindsWhoeverPumpsOnlyWhenTheProgramHasEnded) {
  EXPECT_NO_THROW(gate.throwIfEnded());
  gate.end();
  EXPECT_THROW(gate.throwIfEnded(), ProgramEnded);
}

TEST_F(Gate, TellsOfTheProgramsEndOnce) {
  gate.onEnd(named("ended"));
  gate.end();
  gate.end();
  EXPECT_EQ(log, Texts{"ended"});
}

TEST_F(Gate, TheEndIsKnownWhenItIsTold) {
  bool ended = false;
  gate.onEnd([&] { ended = gate.hasEnded(); });
  gate.end();
  EXPECT_TRUE(ended);
}

// --- Input that a view holds back ---

TEST_F(Gate, FetchesHeldInputAtEachOpeningBehindWhatWaits) {
  gate.onOpen(named("held input"), [] { return false; });
  gate.post(named("waiting"));
  yield();
  yield();
  EXPECT_EQ(log, (Texts{"waiting", "held input", "held input"}));
}

TEST_F(Gate, IsOpenForTheHeldInput) {
  gate.onOpen([&] { gate.post(named("input")); }, [] { return false; });
  yield();
  EXPECT_EQ(log, Texts{"input"});
}

TEST_F(Gate, HeldInputCountsAsWaiting) {
  bool holds = true;
  gate.onOpen([] {}, [&] { return holds; });
  EXPECT_TRUE(gate.hasWaiting());
  holds = false;
  EXPECT_FALSE(gate.hasWaiting());
}

}  // namespace
}  // namespace veltrin
