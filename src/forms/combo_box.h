// SPDX-License-Identifier: GPL-3.0-or-later
// A text that the user types or picks from a list.
#pragma once

#include <algorithm>
#include <vector>

#include "forms/control.h"

namespace veltrin {

class ComboBox : public Control {
 public:
  ComboBox() {
    text.onChange([this] { raise(change); });
  }

  TextProperty text;
  Property<std::vector<std::string>> items;
  Property<bool> pickOnly{false};  // the user picks one of the items and types nothing else
  EventRoutine change;             // after each change of the text
  EventRoutine lostFocus;          // the keyboard went to another control

  // What a user's typing or picking does: the whole text after it.
  void enter(const std::string& typed) {
    if (!visible || !enabled) return;
    const std::vector<std::string>& offered = items.get();
    const bool isOffered = std::find(offered.begin(), offered.end(), typed) != offered.end();
    if (!pickOnly || isOffered) text = typed;
  }

  // What the keyboard's leaving does.
  void leave() { raise(lostFocus); }
};

}  // namespace veltrin
