// SPDX-License-Identifier: GPL-3.0-or-later
// A clock that ticks on a fixed schedule while it is enabled.
#pragma once

#include "forms/control.h"

namespace veltrin {

// Ticks every `interval` milliseconds from the moment it is enabled; an interval
// of 0 is a timer that stands still. It has no look.
class Timer : public Control {
 public:
  Property<int> interval{0};
  EventRoutine timer;

  bool isRunning() const { return enabled && interval > 0; }

  // One tick.
  void tick() { raise(timer); }
};

}  // namespace veltrin
