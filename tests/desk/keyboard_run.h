// SPDX-License-Identifier: GPL-3.0-or-later
// The real program in the hands of a person without a mouse, who knows where the keyboard is.
#pragma once

#include <optional>
#include <string>

#include "desk/program_run.h"

namespace veltrin::desk {

class KeyboardRun : public ProgramRun {
 protected:
  // In which the keyboard has moved if it is to move.
  static constexpr milliseconds kMoment{4000};
  static constexpr int kMostStops = 40;  // of any window, on a way through it with Tab

  static std::string idOf(const Element& element) {
    return element.role + " " + element.name + " at " + std::to_string(element.left) + ", " +
           std::to_string(element.top);
  }

  // Where the keyboard is, once it is in that window; nothing when it is nowhere there.
  static std::optional<Element> focusIn(const std::string& window) {
    const auto focus = focusOf("veltrin");
    return focus && focus->window == window ? focus : std::nullopt;
  }

  // Waits for the keyboard to be elsewhere than at a control.
  static std::optional<Element> focusAfter(const std::string& window,
                                           const std::optional<Element>& before) {
    std::optional<Element> now;
    eventually(kMoment, [&] {
      now = focusIn(window);
      return now && (!before || idOf(*now) != idOf(*before));
    });
    return now;
  }

  // Presses Tab until the keyboard is at the control of that name.
  void goTo(const std::string& window, const std::string& name) {
    auto now = focusAfter(window, std::nullopt);
    for (int step = 0; step < kMostStops && !(now && now->name == name); ++step) {
      desk_->press("Tab");
      now = focusAfter(window, now);
    }
    ASSERT_TRUE(now && now->name == name) << name << ", but " << (now ? idOf(*now) : "nowhere");
  }

  void pressByKeys(const std::string& window, const std::string& name) {
    ASSERT_NO_FATAL_FAILURE(goTo(window, name));
    desk_->press("space");
  }
};

}  // namespace veltrin::desk
