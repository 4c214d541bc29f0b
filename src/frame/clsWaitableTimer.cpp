// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/clsWaitableTimer.h"

#include "text/statement.h"

namespace veltrin {
namespace {

constexpr std::int64_t kUnitsPerMillisecond = 10000;  // of 100 nanoseconds
constexpr int kHalf = 32;                             // bits
constexpr DueTime kAtOnce{-1, -1};

}  // namespace

// The halves are those of the negated delay in two's complement.
DueTime dueTimeAfter(std::int32_t milliSeconds) {
  const std::int64_t units = -kUnitsPerMillisecond * milliSeconds;
  return {static_cast<std::int32_t>(units), static_cast<std::int32_t>(units >> kHalf)};
}

clsWaitableTimer::~clsWaitableTimer() { closeHandle(); }

// Behind the program's end there is no time to wait out before the unwinding.
void clsWaitableTimer::Wait(std::int32_t MilliSeconds) {
  platform_.events.gate().throwIfEnded();
  try {
    waitOnTimer(MilliSeconds);
  } catch (const StatementFailed& failure) {
    throw StatementFailed(std::string("[clsWaitableTimer.Wait]") + failure.what(), failure.number(),
                          failure.source());
  }
}

void clsWaitableTimer::waitOnTimer(std::int32_t milliSeconds) {
  const std::string name =
      platform_.executableName + "Timer" + Format(platform_.clock.now(), "NNSS");
  std::uint32_t lastError = 0;
  timer_ = platform_.timers.create(name, lastError);
  if (lastError != kErrorAlreadyExists) platform_.timers.set(timer_, kAtOnce);
  platform_.timers.set(timer_, dueTimeAfter(milliSeconds));
  bool fired = false;
  do {
    fired = platform_.timers.waitOrMessage(timer_);
    platform_.events.DoEvents();
  } while (!fired);
  closeHandle();
}

void clsWaitableTimer::closeHandle() {
  if (timer_ == 0) return;
  platform_.timers.close(timer_);
  timer_ = 0;
}

void Wait(Platform& platform, std::int32_t milliSeconds) {
  clsWaitableTimer(platform).Wait(milliSeconds);
}

}  // namespace veltrin
