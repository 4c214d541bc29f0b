// SPDX-License-Identifier: GPL-3.0-or-later
// The colour of menus.
#pragma once

#include "platform/desktop.h"

namespace veltrin {

// Paints a window's menus in the colour of the buttons for option 1, else black.
inline void menuColour(Desktop& desktop, Form& form, int option) {
  desktop.setMenuBackground(form, option == 1 ? kButtonColour : Colour{});
}

}  // namespace veltrin
