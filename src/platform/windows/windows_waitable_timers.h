// SPDX-License-Identifier: GPL-3.0-or-later
// Waitable timers of Windows.
#pragma once

#include <string>

#include "platform/event_gate.h"
#include "platform/waitable_timers.h"

namespace veltrin {

// Each operation by the system call of its name. Failures are thrown with the
// system's error number.
class WindowsWaitableTimers : public WaitableTimers {
 public:
  // What waits at the gate came in before a wait begins, and interrupts it.
  explicit WindowsWaitableTimers(const EventGate& gate) : gate_(gate) {}

  Handle create(const std::string& name, std::uint32_t& lastError) override;
  void set(Handle timer, DueTime due) override;
  bool waitOrMessage(Handle timer) override;
  void close(Handle timer) override;

 private:
  const EventGate& gate_;
};

}  // namespace veltrin
