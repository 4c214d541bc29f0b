// SPDX-License-Identifier: GPL-3.0-or-later
// The event loop of the simulated platform: time passes only when somebody waits.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "platform/event_loop.h"
#include "platform/portable/named_timers.h"
#include "platform/waitable_timers.h"
#include "support/journal.h"

namespace veltrin {

// A virtual clock with scripted events. Every run is the same: what falls due at
// one moment comes in the order in which it was scripted, timers behind it.
class SimulatedLoop : public EventLoop, public WaitableTimers, public Journalled {
 public:
  SimulatedLoop();

  std::int64_t milliseconds() const override { return now_; }

  // Scripts something that comes in at a moment of the virtual clock (ms); a
  // moment that has passed is now. It goes through the gate like all events.
  void at(std::int64_t moment, EventGate::Routine routine);
  void after(std::int64_t delay, EventGate::Routine routine) {
    at(now_ + delay, std::move(routine));
  }

  // The resting main loop, until a moment of the clock or the program's end.
  void run(std::int64_t until);

  // Lets time pass while the program does nothing but wait for a child: what
  // comes in meets a closed gate.
  void passUntil(std::int64_t moment);

  // Waitable timers, with shared names as the system has them.
  Handle create(const std::string& name, std::uint32_t& lastError) override;
  void set(Handle timer, DueTime due) override;
  bool waitOrMessage(Handle timer) override;
  void close(Handle timer) override;

  // Makes the next creation of a waitable timer fail.
  bool failNextTimer = false;

  // What was asked of the waitable timers, in order ("create NAME", "set LOW HIGH",
  // "close"), when kept.
  bool keepTimerLog = false;
  std::vector<std::string> timerLog;

 protected:
  void pump() override;
  void waitForEvent() override;

 private:
  std::optional<std::int64_t> nextEvent() const;
  void log(const std::string& line);

  std::int64_t now_ = 0;
  std::multimap<std::int64_t, EventGate::Routine> script_;
  NamedTimers named_;
};

}  // namespace veltrin
