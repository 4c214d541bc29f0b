// SPDX-License-Identifier: GPL-3.0-or-later
// A window as a plain value: its controls by name, its event routines, its life.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "forms/control.h"

namespace veltrin {

// Shapes of the mouse pointer over a window, by their numbers in the system.
enum class MousePointer { Default = 0, SizeAll = 5, Hourglass = 11 };

// What a window asks of whoever keeps the windows.
class FormHost {
 public:
  virtual ~FormHost() = default;

  // Ends the window's events and takes it off the screen. The object lives until
  // the last of its routines on the stack has returned.
  virtual void unload(Form& form) = 0;
};

class Form : public std::enable_shared_from_this<Form> {
 public:
  Form(std::string name, FormHost& host) : name_(std::move(name)), host_(host) {}
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  virtual ~Form() = default;

  Property<std::string> caption;
  Property<MousePointer> mousePointer{MousePointer::Default};

  // Height of the window with its frame, in twips (15 to a pixel at 100 percent): how much
  // of a look with fixed places is seen. 0 for a window whose look lays itself out.
  Property<int> height{0};

  // Its width, in the same way, when the user may size the window; else 0.
  Property<int> width{0};

  // On the window itself.
  EventRoutine click;
  EventRoutine resize;  // behind each change of its size by the user
  MouseRoutine mouseDown;
  MouseRoutine mouseMove;
  MouseRoutine mouseUp;

  // What the user's mouse does on the window beside its controls, so many twips right of
  // its edge.
  void press() { run(click); }
  void resizeTo(int newWidth, int newHeight) {  // twips, with its frame
    run([&] {
      width = newWidth;
      height = newHeight;
      if (resize) resize();
    });
  }
  void pressMouse(MouseButton button, int x = 0) { raise(mouseDown, button, x); }
  void moveMouse(MouseButton button, int x = 0) { raise(mouseMove, button, x); }
  void releaseMouse(MouseButton button, int x = 0) { raise(mouseUp, button, x); }

  // Where the mouse was when one of the routines was last called.
  int mouseX() const { return mouseX_; }

  const std::string& name() const { return name_; }
  const std::vector<Control*>& controls() const { return controls_; }

  // The control of that name, or null. `index` is -1 outside control arrays.
  Control* find(const std::string& name, int index = -1) const;

  // Between the start of its load routine and the end of its unload routine.
  bool isLoaded() const { return loaded_; }

  // Runs the load routine; the window's events are delivered from then on.
  void load();

  // Runs the unload routine and ends the delivery of events. For the host. False,
  // and nothing happens, when that routine is on the stack already or has run.
  bool end();

  // What the close button of the window's frame does.
  void close();

  // Asks the host to take this window away.
  void unload() { host_.unload(*this); }

  // Runs one event routine and keeps the window alive until it has returned.
  // Does nothing when the window is not loaded.
  void run(const EventRoutine& routine);

 protected:
  // Makes a control known under its name. Called once for each. The order of the
  // keyboard is that of the look.
  void own(const std::string& name, Control& control);
  template <class Kind, std::size_t Count>
  void own(const std::string& name, std::array<Kind, Count>& controls) {
    for (std::size_t index = 0; index < Count; ++index) {
      own(name, controls[index]);
      controls[index].index_ = static_cast<int>(index);
    }
  }

  // The same for an array whose last element comes first.
  template <class Kind, std::size_t Count>
  void ownFromLast(const std::string& name, std::array<Kind, Count>& controls) {
    for (std::size_t index = Count; index-- > 0;) {
      own(name, controls[index]);
      controls[index].index_ = static_cast<int>(index);
    }
  }

  virtual void Form_Load() {}
  virtual void Form_Unload() {}

 private:
  void raise(const MouseRoutine& routine, MouseButton button, int x);

  std::string name_;
  FormHost& host_;
  std::vector<Control*> controls_;
  bool loaded_ = false;
  bool ending_ = false;
  int mouseX_ = 0;  // twips
};

}  // namespace veltrin
