// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/simulated_loop.h"

#include <algorithm>
#include <stdexcept>

#include "text/statement.h"

namespace veltrin {
namespace {

constexpr std::int64_t kNanoseconds = 1'000'000;       // in a millisecond
constexpr std::int64_t kUnitsPerMillisecond = 10'000;  // of due times

}  // namespace

SimulatedLoop::SimulatedLoop() : named_([this] { return now_ * kNanoseconds; }) {}

void SimulatedLoop::at(std::int64_t moment, EventGate::Routine routine) {
  script_.emplace(std::max(moment, now_), std::move(routine));
}

void SimulatedLoop::run(std::int64_t until) {
  const EventGate::Opening opening(gate());
  pump();
  while (!gate().hasEnded()) {
    const auto next = nextEvent();
    if (!next || *next > until) break;
    now_ = std::max(now_, *next);
    pump();
  }
  if (!gate().hasEnded()) now_ = std::max(now_, until);
}

void SimulatedLoop::passUntil(std::int64_t moment) {
  // Behind the program's end nothing is taken in any more.
  for (auto next = nextEvent(); next && *next <= moment && !gate().hasEnded(); next = nextEvent()) {
    now_ = std::max(now_, *next);
    pump();
  }
  now_ = std::max(now_, moment);
}

SimulatedLoop::Handle SimulatedLoop::create(const std::string& name, std::uint32_t& lastError) {
  if (failNextTimer) {
    failNextTimer = false;
    throw StatementFailed("No timer to be had", 8, "CreateWaitableTimer");
  }
  log("create " + name);
  return named_.create(name, lastError);
}

void SimulatedLoop::set(Handle timer, DueTime due) {
  if (due.units() != -1) note("wait " + std::to_string(-due.units() / kUnitsPerMillisecond));
  log("set " + std::to_string(due.low) + " " + std::to_string(due.high));
  named_.set(timer, due);
}

bool SimulatedLoop::waitOrMessage(Handle timer) {
  if (named_.hasFired(timer)) return true;
  if (gate().hasWaiting()) return false;
  const std::int64_t due = (named_.dueAt(timer) + kNanoseconds - 1) / kNanoseconds;
  const auto next = nextEvent();
  if (next && *next < due) {
    now_ = std::max(now_, *next);
    return false;
  }
  now_ = due;
  return true;
}

void SimulatedLoop::close(Handle timer) {
  log("close");
  named_.close(timer);
}

// Everything that is due by now, moment by moment. What a delivered routine lets
// fall due comes in the same pump.
void SimulatedLoop::pump() {
  while (!script_.empty() && script_.begin()->first <= now_ && !gate().hasEnded()) {
    auto routine = std::move(script_.begin()->second);
    script_.erase(script_.begin());
    gate().post(std::move(routine));
  }
  timers().runDue();
}

void SimulatedLoop::waitForEvent() {
  if (gate().hasWaiting()) return;
  const auto next = nextEvent();
  if (!next) throw std::logic_error("the program waits for something that never comes");
  now_ = std::max(now_, *next);
}

std::optional<std::int64_t> SimulatedLoop::nextEvent() const {
  std::optional<std::int64_t> next = timers().nextDue();
  if (!script_.empty()) {
    next = std::min(next.value_or(script_.begin()->first), script_.begin()->first);
  }
  return next;
}

void SimulatedLoop::log(const std::string& line) {
  if (keepTimerLog) timerLog.push_back(line);
}

}  // namespace veltrin
