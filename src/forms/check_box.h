// SPDX-License-Identifier: GPL-3.0-or-later
// A box that the user ticks.
#pragma once

#include "forms/control.h"

namespace veltrin {

// States of a check box, by their numbers in the system.
inline constexpr int kUnchecked = 0;
inline constexpr int kChecked = 1;

class CheckBox : public Control {
 public:
  CheckBox() = default;
  explicit CheckBox(std::string text) : caption(std::move(text)) {}

  Property<std::string> caption;
  Property<int> value{kUnchecked};
  EventRoutine click;  // after each change of the value by the user

  // What a user's click does.
  void press() {
    if (!visible || !enabled) return;
    value = value == kChecked ? kUnchecked : kChecked;
    raise(click);
  }
};

}  // namespace veltrin
