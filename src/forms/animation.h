// SPDX-License-Identifier: GPL-3.0-or-later
// A control that plays a short silent clip in a loop.
#pragma once

#include "forms/control.h"

namespace veltrin {

class Animation : public Control {
 public:
  Property<std::string> file;  // the program's path of the opened clip
  Property<bool> playing{false};

  // Opens a clip and plays it in a loop from its first frame. A clip that cannot
  // be read leaves the control empty.
  void open(const std::string& path) {
    file = path;
    playing = true;
  }

  void stop() { playing = false; }
};

}  // namespace veltrin
