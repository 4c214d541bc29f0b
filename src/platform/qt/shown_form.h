// SPDX-License-Identifier: GPL-3.0-or-later
// The look of a form, of which the desktop knows no more than its window.
#pragma once

#include <functional>
#include <memory>

#include <QWidget>

#include "forms/form.h"
#include "platform/event_gate.h"
#include "platform/files.h"

namespace veltrin {

// A form in its window. When this goes, the window leaves the screen, and is deleted
// when nothing of it is on the stack any more.
class ShownForm {
 public:
  ShownForm() = default;
  ShownForm(const ShownForm&) = delete;
  ShownForm& operator=(const ShownForm&) = delete;
  virtual ~ShownForm() = default;

  virtual QWidget& window() = 0;
};

// Gives a form its look, with what it takes to hand on what the user does, and to read
// pictures and clips; both have to live longer. Null for a form that has no look.
using FormLooks = std::function<std::unique_ptr<ShownForm>(Form&, EventGate&, const Files&)>;

}  // namespace veltrin
