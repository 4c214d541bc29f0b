// SPDX-License-Identifier: GPL-3.0-or-later
// What all controls of a window have in common.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "forms/property.h"

namespace veltrin {

class Form;

// A routine that serves one event of a control.
using EventRoutine = std::function<void()>;

// Buttons of the mouse, by their numbers in the system.
enum class MouseButton { None = 0, Left = 1, Right = 2 };

// A routine that serves an event of the mouse, with the button that is meant; while
// the mouse moves, the one that is held.
using MouseRoutine = std::function<void(MouseButton)>;

// Red, green and blue, 0 to 255 each.
struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Colour&, const Colour&) = default;
};

// Background of every button, and of menus that are coloured.
inline constexpr Colour kButtonColour{0xBD, 0xB7, 0x95};

class Control {
 public:
  Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  Property<bool> visible{true};
  Property<bool> enabled{true};
  Property<std::string> toolTip;

  // Place and size in a window whose look has fixed places, in twips (15 to a pixel at 100
  // percent) from the window's corner. 0: as the look has it.
  Property<int> left{0};
  Property<int> top{0};
  Property<int> width{0};
  Property<int> height{0};

  MouseRoutine mouseDown;
  MouseRoutine mouseMove;
  MouseRoutine mouseUp;

  // What the user's mouse does over the control, so many twips (15 to a pixel at 100
  // percent) right of its edge; a disabled one does not notice it.
  void pressMouse(MouseButton button, int x = 0) { raise(mouseDown, button, x); }
  void moveMouse(MouseButton button, int x = 0) { raise(mouseMove, button, x); }
  void releaseMouse(MouseButton button, int x = 0) { raise(mouseUp, button, x); }

  // Where the mouse was when one of the routines was last called.
  int mouseX() const { return mouseX_; }

  // The name under which the window owns the control, and its index in a control
  // array, or -1.
  const std::string& name() const { return name_; }
  int index() const { return index_; }
  Form* form() const { return form_; }

 protected:
  // Runs an event routine as one of the owning window's; nothing happens once
  // that window is unloaded.
  void raise(const EventRoutine& routine);
  void raise(const MouseRoutine& routine, MouseButton button, int x);

 private:
  friend class Form;
  Form* form_ = nullptr;
  std::string name_;
  int index_ = -1;
  int mouseX_ = 0;  // twips
};

}  // namespace veltrin
