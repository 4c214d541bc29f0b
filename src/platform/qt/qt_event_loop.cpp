// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/qt_event_loop.h"

#include <algorithm>
#include <chrono>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QGuiApplication>

namespace veltrin {
namespace {

// A yield takes in what stands in line and no more than so many rounds of what this
// brings along, so that it returns under any load.
constexpr int kMostRounds = 32;

// The longest sleep of the timer in milliseconds, a day; it is armed anew behind it.
constexpr std::int64_t kLongestSleep = std::int64_t{24} * 60 * 60 * 1000;

}  // namespace

QtEventLoop::QtEventLoop() : held_(gate()) {
  QGuiApplication::setQuitOnLastWindowClosed(false);
  due_.setSingleShot(true);
  due_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&due_, &QTimer::timeout, &due_, [this] { tick(); });
  timers().onReschedule([this] { arm(); });
  gate().onOpen([this] { held_.deliver(); }, [this] { return held_.count() > 0; });
  gate().onEnd([] { QCoreApplication::exit(); });
}

void QtEventLoop::run() {
  const EventGate::Opening opening(gate());
  if (!gate().hasEnded()) QCoreApplication::exec();
}

std::int64_t QtEventLoop::milliseconds() const {
  using std::chrono::duration_cast;
  return duration_cast<std::chrono::milliseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

void QtEventLoop::pump() {
  for (int round = 0; round < kMostRounds && !gate().hasEnded(); ++round) {
    const bool more = QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents);
    held_.deliver();
    if (!more) break;
  }
}

void QtEventLoop::waitForEvent() {
  if (!gate().hasWaiting()) sleep();
}

void QtEventLoop::sleep() { sleep_.sleep(); }

void QtEventLoop::arm() {
  const auto next = timers().nextDue();
  if (!next) {
    due_.stop();
    return;
  }
  const std::int64_t delay = std::clamp<std::int64_t>(*next - milliseconds(), 0, kLongestSleep);
  due_.start(static_cast<int>(delay));
}

// The routines of the ticks run on this stack and may pump for long. The timer is
// running again before they start, so that the ticks of other windows come meanwhile;
// the schedule then arms it for the right time.
void QtEventLoop::tick() {
  due_.start(0);
  timers().runDue();
}

}  // namespace veltrin
