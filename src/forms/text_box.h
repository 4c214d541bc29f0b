// A text that the user may edit, or that the program shows at length.
#pragma once

#include "forms/control.h"

namespace veltrin {

class TextBox : public Control {
 public:
  TextBox() {
    text.onChange([this] { raise(change); });
  }

  TextProperty text;
  EventRoutine change;    // after each change of the text, by the user or not
  EventRoutine dblClick;  // the user double-clicked the box

  // What a user's typing does: the whole text after it.
  void enter(const std::string& typed) {
    if (visible && enabled) text = typed;
  }

  // What a user's double click does.
  void doubleClick() {
    if (visible && enabled) raise(dblClick);
  }
};

}  // namespace veltrin
