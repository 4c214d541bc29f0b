// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include "platform/qt/screen.h"
#include "platform/qt/screen_scale.h"

namespace veltrin {
namespace {

QSize sizeOf(const ScreenRectangle& place) {
  return {place.right - place.left, place.bottom - place.top};
}

}  // namespace

bool isPlacedBySystem() { return QGuiApplication::platformName().startsWith("wayland"); }

ScreenPoint cursorPosition() {
  const QPoint place = QCursor::pos();
  const QScreen* screen = QGuiApplication::screenAt(place);
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  return ScreenScale(*screen).toPixels(place);
}

ScreenRectangle windowRectangle(const QWidget& window) {
  return ScreenScale(*window.screen()).toPixels(window.frameGeometry());
}

// A window that keeps its size is only moved, whatever the scale makes of it there.
void moveWindow(QWidget& window, const ScreenRectangle& place) {
  const ScreenScale scale = ScreenScale::at(place, *window.screen());
  const QSize before = sizeOf(windowRectangle(window));
  window.move(scale.toQt({place.left, place.top}));
  if (sizeOf(place) == before) return;
  const QSize frame = window.frameGeometry().size() - window.size();
  window.resize(scale.around(place).size() - frame);
}

}  // namespace veltrin
