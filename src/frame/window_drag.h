// SPDX-License-Identifier: GPL-3.0-or-later
// A window that the user drags by something else than the title of its frame.
#pragma once

#include "platform/desktop.h"

namespace veltrin {

// All places are screen pixels.
struct WindowDrag {
  bool Dragging = false;
  ScreenPoint DragStart;     // of the mouse
  ScreenRectangle DragRect;  // of the window when the mouse was there

  // Begins where mouse and window are now. Where programs do not place their windows the
  // system takes the drag over, and there is nothing to do here.
  void begin(Desktop& desktop, Form& form) {
    Dragging = !desktop.moveBySystem(form);
    if (!Dragging) return;
    DragStart = desktop.cursorPosition();
    DragRect = desktop.windowRectangle(form);
  }

  // Where the window belongs with the mouse where it is now.
  ScreenRectangle place(const Desktop& desktop) const {
    const ScreenPoint cursor = desktop.cursorPosition();
    const int left = DragRect.left + cursor.x - DragStart.x;
    const int top = DragRect.top + cursor.y - DragStart.y;
    return {left, top, left + DragRect.right - DragRect.left, top + DragRect.bottom - DragRect.top};
  }
};

}  // namespace veltrin
