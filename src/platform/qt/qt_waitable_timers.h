// SPDX-License-Identifier: GPL-3.0-or-later
// Waitable timers of a system that has none, with waits that keep the windows painted.
#pragma once

#include <string>

#include "platform/portable/named_timers.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/waitable_timers.h"

namespace veltrin {

class QtWaitableTimers : public WaitableTimers {
 public:
  explicit QtWaitableTimers(QtEventLoop& events);

  Handle create(const std::string& name, std::uint32_t& lastError) override;
  void set(Handle timer, DueTime due) override;

  // Asleep in the system, at most until the timer fires.
  bool waitOrMessage(Handle timer) override;

  void close(Handle timer) override;

 private:
  QtEventLoop& events_;
  NamedTimers timers_;
};

}  // namespace veltrin
