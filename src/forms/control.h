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

  // The name under which the window owns the control, and its index in a control
  // array, or -1.
  const std::string& name() const { return name_; }
  int index() const { return index_; }
  Form* form() const { return form_; }

 protected:
  // Runs an event routine as one of the owning window's; nothing happens once
  // that window is unloaded.
  void raise(const EventRoutine& routine);

 private:
  friend class Form;
  Form* form_ = nullptr;
  std::string name_;
  int index_ = -1;
};

}  // namespace veltrin
