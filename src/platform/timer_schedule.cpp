// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/timer_schedule.h"

#include <algorithm>

namespace veltrin {

void TimerSchedule::add(const std::shared_ptr<Form>& form) {
  for (Control* control : form->controls()) {
    auto* timer = dynamic_cast<Timer*>(control);
    if (timer == nullptr) continue;
    auto entry = std::make_shared<Entry>();
    entry->form = form;
    entry->key = form.get();
    entry->timer = timer;
    entries_.push_back(entry);
    restart(*entry);
    const auto changed = [this, entry] {
      restart(*entry);
      tellRescheduled();
    };
    timer->enabled.observe(changed);
    timer->interval.observe(changed);
  }
  tellRescheduled();
}

void TimerSchedule::remove(const Form& form) {
  std::erase_if(entries_, [&form](const std::shared_ptr<Entry>& entry) {
    if (entry->key != &form) return false;
    ++entry->generation;
    entry->form.reset();
    entry->timer->enabled.observe({});
    entry->timer->interval.observe({});
    return true;
  });
  tellRescheduled();
}

std::optional<std::int64_t> TimerSchedule::nextDue() const {
  std::optional<std::int64_t> next;
  for (const auto& entry : entries_) {
    if (entry->timer->isRunning()) next = std::min(next.value_or(entry->next), entry->next);
  }
  return next;
}

// A tick that is delivered at once may unload the windows of the entries behind it.
void TimerSchedule::runDue() {
  const auto entries = entries_;
  for (const auto& entry : entries) {
    if (entry->form.expired()) continue;
    if (!entry->timer->isRunning() || entry->next > now_()) continue;
    dropDue(*entry);
    if (entry->onStack || entry->waiting) continue;
    entry->waiting = true;
    gate_.post([this, entry, generation = entry->generation] { tick(entry, generation); });
  }
  tellRescheduled();
}

void TimerSchedule::restart(Entry& entry) {
  ++entry.generation;
  entry.waiting = false;
  entry.next = now_() + entry.timer->interval;
}

// Moves the next tick behind the present moment, in step with the schedule.
void TimerSchedule::dropDue(Entry& entry) const {
  const std::int64_t late = now_() - entry.next;
  if (late < 0) return;
  const std::int64_t interval = std::max<std::int64_t>(1, entry.timer->interval);
  entry.next += (late / interval + 1) * interval;
}

void TimerSchedule::tick(const std::shared_ptr<Entry>& entry, std::uint64_t generation) {
  if (entry->generation != generation) return;
  entry->waiting = false;
  const auto form = entry->form.lock();
  if (!form) return;
  struct OnStack {
    TimerSchedule& schedule;
    Entry& entry;
    OnStack(TimerSchedule& owner, Entry& running) : schedule(owner), entry(running) {
      entry.onStack = true;
    }
    ~OnStack() {
      entry.onStack = false;
      schedule.dropDue(entry);
    }
    OnStack(const OnStack&) = delete;
    OnStack& operator=(const OnStack&) = delete;
  } const onStack(*this, *entry);
  entry->timer->tick();
}

void TimerSchedule::tellRescheduled() const {
  if (rescheduled_) rescheduled_();
}

}  // namespace veltrin
