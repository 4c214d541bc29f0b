// SPDX-License-Identifier: GPL-3.0-or-later
// The pumping wait.
#pragma once

#include <cstdint>

#include "platform/platform.h"

namespace veltrin {

// The due time that lets a timer fire `milliSeconds` from now. A time that is not
// above 0 has passed already.
DueTime dueTimeAfter(std::int32_t milliSeconds);

// One wait on one timer of the operating system.
class clsWaitableTimer {
 public:
  explicit clsWaitableTimer(Platform& platform) : platform_(platform) {}
  ~clsWaitableTimer();
  clsWaitableTimer(const clsWaitableTimer&) = delete;
  clsWaitableTimer& operator=(const clsWaitableTimer&) = delete;

  // Returns when the time has passed; everything that comes in meanwhile is
  // delivered. Throws StatementFailed when the system has no timer to give, and
  // ProgramEnded.
  void Wait(std::int32_t MilliSeconds);

 private:
  void waitOnTimer(std::int32_t milliSeconds);
  void closeHandle();

  Platform& platform_;
  WaitableTimers::Handle timer_ = 0;
};

// Waits with a timer of its own. All windows wait through this.
void Wait(Platform& platform, std::int32_t milliSeconds);

}  // namespace veltrin
