// SPDX-License-Identifier: GPL-3.0-or-later
// Places on the screen, in its own pixels whatever the scale of the letters.
#pragma once

#include <memory>

#include <QWidget>

#include "platform/desktop.h"

namespace veltrin {

// Whether the system places the windows and tells no program where they are (Wayland).
bool isPlacedBySystem();

ScreenPoint cursorPosition();

// The place of a window with its frame.
ScreenRectangle windowRectangle(const QWidget& window);
void moveWindow(QWidget& window, const ScreenRectangle& place);

// Draws borders, one pixel wide, that a second drawing at the same place takes away.
class BorderPen {
 public:
  virtual ~BorderPen() = default;

  // Nothing is drawn where the system places the windows.
  virtual void draw(const ScreenRectangle& border) = 0;
};

// That of the system the program runs on.
std::unique_ptr<BorderPen> makeBorderPen();

}  // namespace veltrin
