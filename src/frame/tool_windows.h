// SPDX-License-Identifier: GPL-3.0-or-later
// The windows that others open by name, without knowing them.
#pragma once

#include <functional>
#include <map>
#include <utility>

#include "frame/window_name.h"

namespace veltrin {

// Each tool enters its window here, so that the frame of the program can open it.
class ToolWindows {
 public:
  struct Opening {
    std::function<void()> show;
    // Returns when the window is unloaded; before that, calls what it is given.
    std::function<void(const std::function<void()>& unloaded)> showModal;
  };

  void enter(WindowName name, Opening opening) { openings_[name] = std::move(opening); }

  bool has(WindowName name) const { return openings_.count(name) != 0; }

  // Opens the window; nothing happens when no tool has entered it.
  void show(WindowName name) const {
    if (has(name)) openings_.at(name).show();
  }
  void showModal(WindowName name, const std::function<void()>& unloaded = {}) const {
    if (has(name)) openings_.at(name).showModal(unloaded);
  }

 private:
  std::map<WindowName, Opening> openings_;
};

}  // namespace veltrin
