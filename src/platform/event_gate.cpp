// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/event_gate.h"

#include <utility>

#include "text/statement.h"

namespace veltrin {

void EventGate::post(Routine routine) {
  if (ended_) return;
  waiting_.push_back(std::move(routine));
  if (open_) deliver();
}

EventGate::Opening::Opening(EventGate& gate) : gate_(gate), wasOpen_(gate.open_) {
  gate_.open_ = true;
  gate_.deliver();
  if (gate_.onOpen_) gate_.onOpen_();
}

EventGate::Opening::~Opening() { gate_.open_ = wasOpen_; }

void EventGate::end() {
  if (ended_) return;
  ended_ = true;
  waiting_.clear();
  if (onEnd_) onEnd_();
}

void EventGate::throwIfEnded() const {
  if (ended_) throw ProgramEnded{};
}

// The unwinding stops here, below the frames of a toolkit that knows no
// exceptions, and goes on where the pumping routine finds the program ended.
void EventGate::deliver() {
  while (!waiting_.empty() && !ended_) {
    const Routine routine = std::move(waiting_.front());
    waiting_.pop_front();
    open_ = false;
    try {
      routine();
    } catch (const ProgramEnded&) {
      end();
    } catch (const StatementFailed&) {
      ++escaped_;
    }
    open_ = true;
  }
}

}  // namespace veltrin
