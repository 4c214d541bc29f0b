// SPDX-License-Identifier: GPL-3.0-or-later
// One of some choices that exclude each other.
#pragma once

#include <string>
#include <utility>

#include "forms/form.h"

namespace veltrin {

// All option buttons of a window are one group.
class OptionButton : public Control {
 public:
  OptionButton() = default;
  explicit OptionButton(std::string text) : caption(std::move(text)) {}

  Property<std::string> caption;
  EventRoutine click;  // after a choice by the user

  // Whether this is the choice; changed by `choose`.
  const Property<bool>& value() const { return value_; }

  // Makes this one the choice of its window, and none of the others.
  void choose() {
    if (form() != nullptr) {
      for (Control* control : form()->controls()) {
        auto* other = dynamic_cast<OptionButton*>(control);
        if (other != nullptr && other != this) other->value_ = false;
      }
    }
    value_ = true;
  }

  // What a user's click does.
  void press() {
    if (!visible || !enabled) return;
    choose();
    raise(click);
  }

  // For the view that shows the button.
  Property<bool>& observedValue() { return value_; }

 private:
  Property<bool> value_{false};
};

}  // namespace veltrin
