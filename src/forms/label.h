// A text that the user reads.
#pragma once

#include "forms/control.h"

namespace veltrin {

class Label : public Control {
 public:
  Property<std::string> caption;
  EventRoutine click;

  // What a user's click does.
  void press() {
    if (visible && enabled) raise(click);
  }
};

}  // namespace veltrin
