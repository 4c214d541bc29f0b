// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/window_calls.h"

#include <windows.h>

#include "platform/windows/code_page.h"

namespace veltrin {

ApplicationWindow::ApplicationWindow(const std::string& title)
    : window_(CreateWindowExA(0, "STATIC", toAnsi(title).c_str(), WS_POPUP, 0, 0, 0, 0, nullptr,
                              nullptr, GetModuleHandleA(nullptr), nullptr)) {}

ApplicationWindow::~ApplicationWindow() {
  if (window_ != nullptr) DestroyWindow(static_cast<HWND>(window_));
}

void ApplicationWindow::setTitle(const std::string& title) {
  if (window_ != nullptr) SetWindowTextA(static_cast<HWND>(window_), toAnsi(title).c_str());
}

std::uint32_t findWindowByTitle(const std::string& title) {
  return static_cast<std::uint32_t>(
      reinterpret_cast<std::uintptr_t>(FindWindowA(nullptr, toAnsi(title).c_str())));
}

void setWindowTopmost(void* window, bool topmost) {
  SetWindowPos(static_cast<HWND>(window), topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
               SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
}

ScreenPoint nativeCursorPosition() {
  POINT place{};
  GetCursorPos(&place);
  return {static_cast<int>(place.x), static_cast<int>(place.y)};
}

ScreenRectangle nativeWindowRectangle(void* window) {
  RECT place{};
  GetWindowRect(static_cast<HWND>(window), &place);
  return {static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right),
          static_cast<int>(place.bottom)};
}

void moveNativeWindow(void* window, const ScreenRectangle& place) {
  MoveWindow(static_cast<HWND>(window), place.left, place.top, place.right - place.left,
             place.bottom - place.top, TRUE);
}

void invertBorder(const ScreenRectangle& border) {
  const HWND desktop = GetDesktopWindow();
  const HDC screen = GetWindowDC(desktop);
  if (screen == nullptr) return;
  const RECT place{border.left, border.top, border.right, border.bottom};
  DrawFocusRect(screen, &place);
  ReleaseDC(desktop, screen);
}

// The menu owns the brush from then on: the system uses it for every painting.
void setNativeMenuBackground(void* window, Colour colour) {
  const HMENU menu = GetMenu(static_cast<HWND>(window));
  if (menu == nullptr) return;
  const LOGBRUSH look{BS_SOLID, RGB(colour.red, colour.green, colour.blue), 0};
  MENUINFO info{};
  info.cbSize = sizeof info;
  GetMenuInfo(menu, &info);
  info.fMask = MIM_BACKGROUND | MIM_APPLYTOSUBMENUS;
  info.hbrBack = CreateBrushIndirect(&look);
  SetMenuInfo(menu, &info);
}

void removeFromNativeSystemMenu(void* window, int entry, int flags) {
  const HMENU menu = GetSystemMenu(static_cast<HWND>(window), FALSE);
  if (menu == nullptr) return;
  const bool isPosition = (flags & MF_BYPOSITION) != 0;
  const UINT which = isPosition ? static_cast<UINT>(entry) : LOWORD(entry);
  RemoveMenu(menu, which, static_cast<UINT>(flags));
}

}  // namespace veltrin
