// SPDX-License-Identifier: GPL-3.0-or-later
// What the toolkit cannot do with a window, or not once it is on the screen.
#pragma once

#include <QWidget>

#include "forms/control.h"

namespace veltrin {

// Keeps a window above all others, or ends that, without taking it off the screen.
void setTopmost(QWidget& window, bool topmost);

// The upper left corner of a frame that was moved into a room: as little as it takes, and
// what is larger than the room begins at its edge. In the toolkit's pixels.
QPoint cornerWithin(const QRect& room, QRect frame);

// Paints the menus of a window; does nothing without one.
void setMenuBackground(QWidget& window, Colour colour);

// The property of a window that tells that its user may not close it, whichever way the
// wish comes: by mouse, keyboard, task bar or window manager.
inline constexpr const char* kUnclosableProperty = "unclosable";

// RemoveMenu on the window's system menu, before the window is shown. Without the close
// command the frame has no close button either, and the window bears the property above.
// Every other entry is one of Windows alone.
void removeFromSystemMenu(QWidget& window, int entry, int flags);

}  // namespace veltrin
