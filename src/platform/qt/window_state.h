// What the toolkit cannot do with a window that is on the screen already.
#pragma once

#include <QWidget>

#include "forms/control.h"

namespace veltrin {

// Keeps a window above all others, or ends that, without taking it off the screen.
void setTopmost(QWidget& window, bool topmost);

// Paints the menus of a window; does nothing without one.
void setMenuBackground(QWidget& window, Colour colour);

}  // namespace veltrin
