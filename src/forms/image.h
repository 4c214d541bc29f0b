// SPDX-License-Identifier: GPL-3.0-or-later
// A picture of the window's look.
#pragma once

#include "forms/control.h"

namespace veltrin {

class Image : public Control {
 public:
  EventRoutine click;

  // What a user's click does.
  void press() {
    if (visible && enabled) raise(click);
  }
};

}  // namespace veltrin
