// SPDX-License-Identifier: GPL-3.0-or-later
// Waitable timers of the operating system, and the wait for one of them that
// any message interrupts.
#pragma once

#include <cstdint>
#include <string>

namespace veltrin {

// A time relative to now in units of 100 nanoseconds, negated, in the two halves
// that SetWaitableTimer takes.
struct DueTime {
  std::int32_t low = 0;
  std::int32_t high = 0;

  // The time as one number; negative values are relative to now.
  std::int64_t units() const {
    return static_cast<std::int64_t>(
        (static_cast<std::uint64_t>(static_cast<std::uint32_t>(high)) << 32) |
        static_cast<std::uint32_t>(low));
  }
};

// Error of CreateWaitableTimer for a name that is in use; the handle is good and
// names the same timer.
inline constexpr std::uint32_t kErrorAlreadyExists = 183;

class WaitableTimers {
 public:
  using Handle = std::intptr_t;

  virtual ~WaitableTimers() = default;

  // CreateWaitableTimerA with no security and manual reset. `lastError` is 0 or
  // kErrorAlreadyExists. Throws StatementFailed when there is none to have.
  virtual Handle create(const std::string& name, std::uint32_t& lastError) = 0;

  // SetWaitableTimer with no period, no routine and no resume. Throws
  // StatementFailed.
  virtual void set(Handle timer, DueTime due) = 0;

  // MsgWaitForMultipleObjects with the one handle, no time-out and all kinds of
  // input: sleeps until the timer has fired (true) or something came in (false);
  // what waits at the event gate has come in.
  // Throws StatementFailed.
  virtual bool waitOrMessage(Handle timer) = 0;

  // CloseHandle.
  virtual void close(Handle timer) = 0;
};

}  // namespace veltrin
