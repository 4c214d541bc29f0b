// SPDX-License-Identifier: GPL-3.0-or-later
// A text that the user reads.
#pragma once

#include <optional>

#include "forms/control.h"

namespace veltrin {

class Label : public Control {
 public:
  Property<std::string> caption;
  Property<std::optional<Colour>> foreColour;  // of the text; none: that of the look

  EventRoutine click;

  // What a user's click does.
  void press() {
    if (visible && enabled) raise(click);
  }
};

}  // namespace veltrin
