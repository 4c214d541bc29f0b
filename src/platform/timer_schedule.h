// SPDX-License-Identifier: GPL-3.0-or-later
// When the timers of the loaded windows tick.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "forms/form.h"
#include "forms/timer.h"
#include "platform/event_gate.h"

namespace veltrin {

// A timer ticks on a fixed schedule from the moment it is enabled. A tick that
// falls due while the timer's own routine is on the stack is dropped; one that
// falls due while the gate is closed waits, and no second one behind it.
// Disabling a timer or changing its interval starts its schedule anew. All times
// are milliseconds of one clock that never goes back.
class TimerSchedule {
 public:
  TimerSchedule(EventGate& gate, std::function<std::int64_t()> now)
      : gate_(gate), now_(std::move(now)) {}

  // Takes in the timers of a window, or lets them go.
  void add(const std::shared_ptr<Form>& form);
  void remove(const Form& form);

  // When the next tick falls due; nothing when no timer runs.
  std::optional<std::int64_t> nextDue() const;

  // Hands every tick that is due to the gate.
  void runDue();

  // Called when nextDue() may have changed outside runDue().
  void onReschedule(std::function<void()> routine) { rescheduled_ = std::move(routine); }

 private:
  struct Entry {
    std::weak_ptr<Form> form;  // nothing once the timer was let go, as `timer` may dangle then
    const Form* key = nullptr;
    Timer* timer = nullptr;
    std::int64_t next = 0;
    std::uint64_t generation = 0;  // of the schedule; a tick of an older one is void
    bool waiting = false;
    bool onStack = false;
  };

  void restart(Entry& entry);
  void dropDue(Entry& entry) const;
  void tick(const std::shared_ptr<Entry>& entry, std::uint64_t generation);
  void tellRescheduled() const;

  EventGate& gate_;
  std::function<std::int64_t()> now_;
  std::function<void()> rescheduled_;
  std::vector<std::shared_ptr<Entry>> entries_;
};

}  // namespace veltrin
