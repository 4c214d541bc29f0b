// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/window_state.h"

#include <algorithm>

#include <QMenu>
#include <QMenuBar>
#include <QWindow>

#include "platform/desktop.h"

#ifdef Q_OS_WIN
#include "platform/windows/window_calls.h"
#endif

namespace veltrin {
namespace {

void paint(QWidget& menu, const QColor& background) {
  QPalette palette = menu.palette();
  for (const auto role : {QPalette::Window, QPalette::Button, QPalette::Base}) {
    palette.setColor(role, background);
  }
  menu.setPalette(palette);
}

}  // namespace

// The widget's own record of its flags has to agree, or its next change of flags would
// undo this one.
void setTopmost(QWidget& window, bool topmost) {
  window.winId();
#ifdef Q_OS_WIN
  setWindowTopmost(reinterpret_cast<void*>(window.winId()), topmost);
#else
  window.windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topmost);
#endif
  Qt::WindowFlags flags = window.windowFlags();
  flags.setFlag(Qt::WindowStaysOnTopHint, topmost);
  window.overrideWindowFlags(flags);
}

QPoint cornerWithin(const QRect& room, QRect frame) {
  frame.moveRight(std::min(frame.right(), room.right()));
  frame.moveBottom(std::min(frame.bottom(), room.bottom()));
  frame.moveLeft(std::max(frame.left(), room.left()));
  frame.moveTop(std::max(frame.top(), room.top()));
  return frame.topLeft();
}

void setMenuBackground(QWidget& window, Colour colour) {
#ifdef Q_OS_WIN
  setNativeMenuBackground(reinterpret_cast<void*>(window.winId()), colour);
#endif
  auto* bar = window.findChild<QMenuBar*>();
  if (bar == nullptr) return;
  const QColor background(colour.red, colour.green, colour.blue);
  paint(*bar, background);
  for (QMenu* menu : bar->findChildren<QMenu*>()) paint(*menu, background);
}

// The flags come first: a change of them would give the system's window a new menu.
void removeFromSystemMenu(QWidget& window, int entry, int flags) {
  if (entry == kCloseCommand && flags == kByCommand) {
    window.setProperty(kUnclosableProperty, true);
    Qt::WindowFlags frame = window.windowFlags() | Qt::CustomizeWindowHint;
    frame.setFlag(Qt::WindowCloseButtonHint, false);
    window.setWindowFlags(frame);
  }
#ifdef Q_OS_WIN
  removeFromNativeSystemMenu(reinterpret_cast<void*>(window.winId()), entry, flags);
#endif
}

}  // namespace veltrin
