// SPDX-License-Identifier: GPL-3.0-or-later
// Ties a window's model to its look.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <QCursor>
#include <QPointer>

#include "platform/qt/shown_form.h"
#include "view/binding.h"
#include "view/form_window.h"

namespace veltrin {

// The name of a control's widget: the control's own, with "_i" behind it for element i
// of a control array.
std::string widgetName(const Control& control);

// Whether a control has no look, and so no widget.
bool isInvisibleByKind(const Control& control);

// Shows a form in its window and hands what the user does there to the form. When the
// binder goes, both live on without each other. Changes by the program never come back
// as actions of the user's.
class Binder : public ShownForm {
 public:
  // `window` is the look of that form. `gate` and `files` have to live longer.
  Binder(Form& form, std::unique_ptr<FormWindow> window, EventGate& gate, const Files& files);
  ~Binder() override;
  Binder(const Binder&) = delete;
  Binder& operator=(const Binder&) = delete;

  FormWindow& window() override { return *window_; }

 private:
  void bindFrame(Form& form);
  void bindControl(Control& control, QWidget& widget);
  void bindKind(Control& control, QWidget& widget);
  void setPointer(MousePointer pointer);

  std::unique_ptr<FormWindow> window_;
  Binding binding_;
  std::vector<std::pair<QPointer<QWidget>, QCursor>> ownPointers_;  // put aside meanwhile
};

}  // namespace veltrin
