// SPDX-License-Identifier: GPL-3.0-or-later
// A button.
#pragma once

#include "forms/control.h"

namespace veltrin {

class CommandButton : public Control {
 public:
  CommandButton() = default;
  explicit CommandButton(std::string text) : caption(std::move(text)) {}

  Property<std::string> caption;
  Property<Colour> backColour{kButtonColour};
  EventRoutine click;

  // What a user's click does: runs `click` when the button can be clicked.
  void press() {
    if (visible && enabled) raise(click);
  }
};

}  // namespace veltrin
