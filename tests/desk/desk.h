// SPDX-License-Identifier: GPL-3.0-or-later
// A desk with a screen, a mouse and a keyboard of its own: Xvfb, a window manager
// and the bus of screen readers, on which the real program is used as people do.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "desk/accessible.h"

namespace veltrin::desk {

using std::chrono::milliseconds;

// A program that runs until it ends or this goes, which ends it.
class Child {
 public:
  // Throws std::runtime_error when it cannot be started.
  explicit Child(const std::vector<std::string>& command);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  pid_t pid() const { return pid_; }

  // Its exit code, -1 when a signal ended it; nothing while it runs after the time.
  std::optional<int> waitFor(milliseconds time);

 private:
  pid_t pid_ = 0;
  std::optional<int> exit_;
};

// Runs a program to its end and returns what it printed. Throws std::runtime_error
// when it did not end well.
std::string outputOf(const std::vector<std::string>& command);

// Asks again and again until the answer is yes or the time is over.
bool eventually(milliseconds time, const std::function<bool()>& question);

class Desk {
 public:
  // Makes the screen and sets DISPLAY and the like for programs to come. Throws
  // std::runtime_error, with the reason in words, where that cannot be had.
  Desk();

  // The control that the question fits, among those that are showing in a window of
  // the program; waits for it up to half a minute. Throws std::runtime_error.
  Element find(const std::string& what, const std::function<bool(const Element&)>& fits) const;
  Element button(const std::string& window, const std::string& caption) const;
  Element named(const std::string& window, const std::string& name) const;

  // A control that was found, once the window manager has placed its window.
  Element placed(const Element& element) const;

  // The text behind a control's accessible name: "24" for "Lowest time 24".
  std::string valueOf(const std::string& window, const std::string& name) const;

  bool hasWindow(const std::string& title) const;

  // How many windows of the program are on the screen, its menus and borders among them.
  std::ptrdiff_t windowsOnScreen() const;

  // Puts the window of exactly that title before all others, once it is on the screen.
  void bringToFront(const std::string& title) const;

  // The mouse, in the middle of a control, and the keyboard.
  void click(const Element& seen, int times = 1) const;
  void doubleClick(const Element& element) const;
  void type(const std::string& text) const;
  void press(const std::string& keys) const;

  std::string clipboard() const;

  // A picture of the screen under build/pictures.
  void photograph(const std::string& name) const;

 private:
  std::optional<Child> screen_;
  std::optional<Child> bus_;
  std::optional<Child> windowManager_;
};

}  // namespace veltrin::desk
