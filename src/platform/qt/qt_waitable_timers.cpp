// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/qt_waitable_timers.h"

#include <algorithm>
#include <chrono>

#include <QTimer>

namespace veltrin {
namespace {

constexpr std::int64_t kNanosecondsPerMillisecond = 1'000'000;
constexpr std::int64_t kLongestSleep = std::int64_t{24} * 60 * 60 * 1000;  // ms

std::int64_t nanoseconds() {
  using std::chrono::duration_cast;
  return duration_cast<std::chrono::nanoseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

// The whole milliseconds that a time is away, rounded up, so that nobody wakes early.
int sleepUntil(std::int64_t dueAt) {
  const std::int64_t left = std::max<std::int64_t>(0, dueAt - nanoseconds());
  const std::int64_t whole =
      left / kNanosecondsPerMillisecond + (left % kNanosecondsPerMillisecond > 0 ? 1 : 0);
  return static_cast<int>(std::min(whole, kLongestSleep));
}

}  // namespace

QtWaitableTimers::QtWaitableTimers(QtEventLoop& events) : events_(events), timers_(nanoseconds) {}

WaitableTimers::Handle QtWaitableTimers::create(const std::string& name, std::uint32_t& lastError) {
  return timers_.create(name, lastError);
}

void QtWaitableTimers::set(Handle timer, DueTime due) { timers_.set(timer, due); }

bool QtWaitableTimers::waitOrMessage(Handle timer) {
  if (timers_.hasFired(timer)) return true;
  if (events_.gate().hasWaiting()) return false;
  QTimer alarm;
  alarm.setSingleShot(true);
  alarm.setTimerType(Qt::PreciseTimer);
  alarm.start(sleepUntil(timers_.dueAt(timer)));
  events_.sleep();
  return timers_.hasFired(timer);
}

void QtWaitableTimers::close(Handle timer) { timers_.close(timer); }

}  // namespace veltrin
