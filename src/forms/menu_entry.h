// SPDX-License-Identifier: GPL-3.0-or-later
// An entry of the window's menu.
#pragma once

#include "forms/control.h"

namespace veltrin {

class MenuEntry : public Control {
 public:
  MenuEntry() = default;
  explicit MenuEntry(std::string text) : caption(std::move(text)) {}

  Property<std::string> caption;
  std::string Tag;  // for the window's own use
  EventRoutine click;

  // What choosing the entry does.
  void press() {
    if (visible && enabled) raise(click);
  }
};

}  // namespace veltrin
