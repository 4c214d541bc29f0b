// SPDX-License-Identifier: GPL-3.0-or-later
// What ties one control of a window to its widget.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <QAction>
#include <QPointF>
#include <QWidget>

#include "controls/LVListBox.h"
#include "controls/bkCProg.h"
#include "forms/animation.h"
#include "forms/chart.h"
#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/command_button.h"
#include "forms/form.h"
#include "forms/image.h"
#include "forms/label.h"
#include "forms/list_box.h"
#include "forms/menu_entry.h"
#include "forms/option_button.h"
#include "forms/picture_box.h"
#include "forms/progress_bar.h"
#include "forms/text_box.h"
#include "platform/event_gate.h"
#include "platform/files.h"
#include "view/form_window.h"

namespace veltrin {

// Shared by all controls of a window. What the user does reaches the control through
// the gate, and only as long as its window lives.
class Binding {
 public:
  Binding(Form& form, EventGate& gate, const Files& files)
      : form_(form.weak_from_this()), gate_(gate), files_(files) {}
  ~Binding() { release(); }
  Binding(const Binding&) = delete;
  Binding& operator=(const Binding&) = delete;

  const Files& files() const { return files_; }

  // Hands an action of the user's to the gate.
  void post(std::function<void()> action) const {
    gate_.post([form = form_, action = std::move(action)] {
      if (const auto alive = form.lock()) action();
    });
  }

  // Receiver of the widgets' signals; they end with the binding.
  QObject* receiver() { return &receiver_; }

  // Shows a property now and after each change.
  template <class Value, class Show>
  void show(Property<Value>& property, Show show) {
    property.observe([&property, show] { show(property.get()); });
    atEnd([&property] { property.observe({}); });
    show(property.get());
  }

  // What is to be done when the widgets and the controls part, if these still live.
  void atEnd(std::function<void()> routine) { ends_.push_back(std::move(routine)); }

 private:
  void release() {
    const auto alive = form_.lock();
    for (const auto& end : ends_) {
      if (alive) end();
    }
  }

  std::weak_ptr<Form> form_;
  EventGate& gate_;
  const Files& files_;
  QObject receiver_;
  std::vector<std::function<void()>> ends_;
};

// Tie the kinds of controls to their widgets. A widget of another kind than the
// control asks for stays as it is.
void bindLabel(Label& label, QWidget& widget, Binding& binding);
void bindTextBox(TextBox& box, QWidget& widget, Binding& binding);
void bindComboBox(ComboBox& box, QWidget& widget, Binding& binding);
void bindButton(CommandButton& button, QWidget& widget, Binding& binding);
void bindListBox(ListBox& list, QWidget& widget, Binding& binding);
void bindAnimation(Animation& animation, QWidget& widget, Binding& binding);
void bindChart(Chart& chart, QWidget& widget, Binding& binding);
void bindPictureBox(PictureBox& picture, QWidget& widget, Binding& binding);
void bindProgressBar(ProgressBar& bar, QWidget& widget, Binding& binding);
void bindLineList(LVListBox& list, QWidget& widget, Binding& binding);
void bindGauge(bkCProg& gauge, QWidget& widget, Binding& binding);
void bindCheckBox(CheckBox& box, QWidget& widget, Binding& binding);
void bindOption(OptionButton& button, QWidget& widget, Binding& binding);
void bindImage(Image& image, QWidget& widget, Binding& binding);
void bindMenuEntry(MenuEntry& entry, QAction& action, Binding& binding);

// Puts a widget where the control is to be, in the size it is to have; it stays where its look
// puts it as long as the control tells nothing.
void bindPlace(Control& control, QWidget& widget, Binding& binding);

// Gives the window the size that the form has. Where its user may size it, each size that the
// user gives it is told to the form; while one waits for the gate, a later one takes its place.
void bindWindowSize(Form& form, FormWindow& window, Binding& binding);

// Hands on what the mouse does over a control whose window has routines for it. While
// one move waits for the gate, further ones take its place. The key Tab that brings the
// keyboard to the control stands for the mouse that comes over it.
void bindMouse(Control& control, QWidget& widget, Binding& binding);

// The same for the window beside its controls, and clicks there; for those the keys
// Space, Enter and Escape stand in. Where the window has a routine for pressed buttons, the
// menu key and Escape stand in for the right one, and the arrow keys move a window without a
// frame.
void bindWindowMouse(Form& form, FormWindow& window, Binding& binding);

// Posts an action when the left button is pressed and released over a part of a widget.
void bindClick(const std::function<bool(const QPointF&)>& isTarget, QWidget& widget,
               Binding& binding, const std::function<void()>& action);

}  // namespace veltrin
