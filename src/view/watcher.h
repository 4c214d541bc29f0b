// SPDX-License-Identifier: GPL-3.0-or-later
// Looks at the events of a widget before the widget does.
#pragma once

#include <functional>

#include <QEvent>
#include <QWidget>

#include "view/binding.h"

namespace veltrin {

// Calls a routine for each event of a widget until the binding ends. The widget still
// gets every event.
void watch(QWidget& widget, Binding& binding, std::function<void(const QEvent&)> routine);

}  // namespace veltrin
