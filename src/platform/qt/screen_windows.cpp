// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/screen.h"
#include "platform/windows/window_calls.h"

namespace veltrin {
namespace {

void* handleOf(const QWidget& window) { return reinterpret_cast<void*>(window.winId()); }

class WindowsBorderPen : public BorderPen {
 public:
  void draw(const ScreenRectangle& border) override { invertBorder(border); }
};

}  // namespace

bool isPlacedBySystem() { return false; }

ScreenPoint cursorPosition() { return nativeCursorPosition(); }

ScreenRectangle windowRectangle(const QWidget& window) {
  return nativeWindowRectangle(handleOf(window));
}

void moveWindow(QWidget& window, const ScreenRectangle& place) {
  moveNativeWindow(handleOf(window), place);
}

std::unique_ptr<BorderPen> makeBorderPen() { return std::make_unique<WindowsBorderPen>(); }

}  // namespace veltrin
