// SPDX-License-Identifier: GPL-3.0-or-later
// The program's windows as a screen reader finds them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrin::desk {

// One control on the screen, as it was when it was looked at.
struct Element {
  std::string role;  // "push button", "text", "label", "combo box", ...
  std::string name;
  std::string text;  // what an editable control holds
  int left = 0;      // place on the screen in pixels
  int top = 0;
  int width = 0;
  int height = 0;
  bool showing = false;
  bool enabled = false;
  std::string window;  // title of the window it stands in
};

// All controls of all windows of the program of that name; empty while it is not
// there or does not answer.
std::vector<Element> elementsOf(const std::string& program);

// The control of that program that has the keyboard, in the window that is in front; nothing
// when none of them has it.
std::optional<Element> focusOf(const std::string& program);

}  // namespace veltrin::desk
