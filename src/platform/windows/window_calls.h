// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of Windows that concern windows of any program.
#pragma once

#include <cstdint>
#include <string>

#include "forms/control.h"
#include "platform/desktop.h"

namespace veltrin {

// The hidden window that bears a program's title among the windows of the system.
class ApplicationWindow {
 public:
  explicit ApplicationWindow(const std::string& title);
  ~ApplicationWindow();
  ApplicationWindow(const ApplicationWindow&) = delete;
  ApplicationWindow& operator=(const ApplicationWindow&) = delete;

  // SetWindowTextA.
  void setTitle(const std::string& title);

 private:
  void* window_;  // an HWND; null when the system has none to give
};

// FindWindowA with no class: the low 32 bits of the handle, all that a handle of a
// window has; 0 when there is no window of that title.
std::uint32_t findWindowByTitle(const std::string& title);

// SetWindowPos above all others (-1) or no longer (-2), with size, place and
// activation left alone. `window` is an HWND.
void setWindowTopmost(void* window, bool topmost);

// GetCursorPos, and GetWindowRect of an HWND; zeros when the system refuses.
ScreenPoint nativeCursorPosition();
ScreenRectangle nativeWindowRectangle(void* window);

// MoveWindow, painted anew.
void moveNativeWindow(void* window, const ScreenRectangle& place);

// DrawFocusRect on the device context of the desktop.
void invertBorder(const ScreenRectangle& border);

// Paints the background of a window's menus and their submenus. Does nothing for a
// window without a menu of the system's.
void setNativeMenuBackground(void* window, Colour colour);

// RemoveMenu on the window's own copy of the system menu (GetSystemMenu). A command is the
// low word of `entry`; a position is taken as it is.
void removeFromNativeSystemMenu(void* window, int entry, int flags);

}  // namespace veltrin
