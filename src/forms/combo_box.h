// A text that the user types or picks from a list.
#pragma once

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
  EventRoutine change;     // after each change of the text
  EventRoutine lostFocus;  // the keyboard went to another control

  // What a user's typing or picking does: the whole text after it.
  void enter(const std::string& typed) {
    if (visible && enabled) text = typed;
  }

  // What the keyboard's leaving does.
  void leave() { raise(lostFocus); }
};

}  // namespace veltrin
