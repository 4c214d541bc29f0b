// A text that the user reads.
#pragma once

#include <optional>

#include "forms/control.h"

namespace veltrin {

class Label : public Control {
 public:
  Property<std::string> caption;
  Property<std::optional<Colour>> foreColour;  // of the text; none: that of the look

  // Place in a window whose look has fixed places, in twips (15 to a pixel at 100 percent)
  // from the window's corner. 0: where the look puts it.
  Property<int> left{0};
  Property<int> top{0};

  EventRoutine click;

  // What a user's click does.
  void press() {
    if (visible && enabled) raise(click);
  }
};

}  // namespace veltrin
