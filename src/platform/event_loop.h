// SPDX-License-Identifier: GPL-3.0-or-later
// The pump of the program: where events come from and when they are delivered.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/event_gate.h"
#include "platform/timer_schedule.h"

namespace veltrin {

class EventLoop {
 public:
  EventLoop() : timers_(gate_, [this] { return milliseconds(); }) {}
  virtual ~EventLoop() = default;
  EventLoop(const EventLoop&) = delete;
  EventLoop& operator=(const EventLoop&) = delete;

  EventGate& gate() { return gate_; }
  TimerSchedule& timers() { return timers_; }
  const TimerSchedule& timers() const { return timers_; }

  // Delivers everything that has come in, with the gate open, and returns.
  // Throws ProgramEnded when the program has ended.
  void DoEvents() {
    {
      const EventGate::Opening opening(gate_);
      pump();
    }
    gate_.throwIfEnded();
  }

  // Pumps until the condition is met, asleep while nothing comes in. The
  // condition is asked after each delivery. Throws ProgramEnded.
  void pumpUntil(const std::function<bool()>& met) {
    DoEvents();
    while (!met()) {
      waitForEvent();
      DoEvents();
    }
  }

  // A clock that never goes back, in milliseconds.
  virtual std::int64_t milliseconds() const = 0;

 protected:
  // Takes in what the system has for the program and posts it to the gate.
  virtual void pump() = 0;

  // Sleeps until something may have come in.
  virtual void waitForEvent() = 0;

 private:
  EventGate gate_;
  TimerSchedule timers_;
};

}  // namespace veltrin
