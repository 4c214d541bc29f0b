// SPDX-License-Identifier: GPL-3.0-or-later
// Waitable timers by name for systems that have none: the bookkeeping alone,
// driven by a clock that it is handed.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/waitable_timers.h"

namespace veltrin {

// Handles that were made under one name share one timer, as the system's own do:
// setting it through one handle sets it for all. Times of the clock are
// nanoseconds and never go back.
class NamedTimers {
 public:
  using Handle = WaitableTimers::Handle;

  explicit NamedTimers(std::function<std::int64_t()> now) : now_(std::move(now)) {}

  Handle create(const std::string& name, std::uint32_t& lastError);

  // Throw StatementFailed for a handle that is not open.
  void set(Handle timer, DueTime due);
  bool hasFired(Handle timer) const;

  // When the timer fires, in nanoseconds of the clock; the largest number for a
  // timer that was never set.
  std::int64_t dueAt(Handle timer) const;

  void close(Handle timer);

 private:
  struct TimerState {
    std::int64_t dueAt = INT64_MAX;
  };

  TimerState& at(Handle timer) const;

  std::function<std::int64_t()> now_;
  std::map<std::string, std::weak_ptr<TimerState>> byName_;
  std::map<Handle, std::shared_ptr<TimerState>> byHandle_;
  Handle last_ = 0;
};

}  // namespace veltrin
