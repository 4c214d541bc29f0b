// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/named_timers.h"

#include <algorithm>

#include "text/statement.h"

namespace veltrin {
namespace {

constexpr std::int64_t kNanosecondsPerUnit = 100;
constexpr int kInvalidHandle = 6;  // ERROR_INVALID_HANDLE of the system

}  // namespace

NamedTimers::Handle NamedTimers::create(const std::string& name, std::uint32_t& lastError) {
  std::shared_ptr<TimerState> state = byName_[name].lock();
  lastError = state ? kErrorAlreadyExists : 0;
  if (!state) {
    std::erase_if(byName_, [](const auto& named) { return named.second.expired(); });
    state = std::make_shared<TimerState>();
    byName_[name] = state;
  }
  byHandle_[++last_] = std::move(state);
  return last_;
}

// A time that is not negative is one of the calendar, which for this program's
// waits has always passed.
void NamedTimers::set(Handle timer, DueTime due) {
  const std::int64_t units = std::clamp<std::int64_t>(-due.units(), 0, INT64_MAX / 1000);
  at(timer).dueAt = now_() + units * kNanosecondsPerUnit;
}

bool NamedTimers::hasFired(Handle timer) const { return now_() >= at(timer).dueAt; }

std::int64_t NamedTimers::dueAt(Handle timer) const { return at(timer).dueAt; }

void NamedTimers::close(Handle timer) { byHandle_.erase(timer); }

NamedTimers::TimerState& NamedTimers::at(Handle timer) const {
  const auto found = byHandle_.find(timer);
  if (found == byHandle_.end()) throw StatementFailed("The handle is invalid", kInvalidHandle);
  return *found->second;
}

}  // namespace veltrin
