// SPDX-License-Identifier: GPL-3.0-or-later
// A text that the user may edit, or that the program shows at length.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

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

  // What a user's typing does to a long text: `added` comes in the place of `removed`
  // bytes from `position` on. False when the box takes no typing.
  bool edit(std::size_t position, std::size_t removed, std::string_view added) {
    if (!visible || !enabled) return false;
    text.replace(position, removed, added);
    return true;
  }

  // What a user's double click does.
  void doubleClick() {
    if (visible && enabled) raise(dblClick);
  }

  // Puts the caret behind the last character, so that the newest text is in view.
  void caretToEnd() {
    if (caretToEnd_) caretToEnd_();
  }

  // Sets who puts the caret there, the view that shows the box; an empty function
  // takes it away.
  void observeCaret(std::function<void()> toEnd) { caretToEnd_ = std::move(toEnd); }

 private:
  std::function<void()> caretToEnd_;
};

}  // namespace veltrin
