// SPDX-License-Identifier: GPL-3.0-or-later
// The windows that there are, by the names of their forms.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/qt/shown_form.h"
#include "view/form_window.h"

namespace veltrin {

// A new window with the look of that name and nothing in it yet; null when there is none.
std::unique_ptr<FormWindow> makeWindow(const std::string& name);

// A form in its window, tied to it; null for a form that has no window of its own here.
std::unique_ptr<ShownForm> showInWindow(Form& form, EventGate& gate, const Files& files);

// The names of all windows.
std::vector<std::string> windowNames();

}  // namespace veltrin
