// SPDX-License-Identifier: GPL-3.0-or-later
// The screen: windows, message boxes, the clipboard.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "forms/form.h"
#include "forms/menu_entry.h"

namespace veltrin {

// Styles of message boxes and their answers, by their numbers in the system.
inline constexpr int kMessageOk = 0;
inline constexpr int kMessageYesNo = 4;
inline constexpr int kMessageCritical = 16;
inline constexpr int kMessageWarning = 48;
inline constexpr int kAnswerOk = 1;
inline constexpr int kAnswerYes = 6;
inline constexpr int kAnswerNo = 7;

// Added to a style: the message comes to the foreground, before other programs' windows
// (MB_SETFOREGROUND).
inline constexpr int kMessageToForeground = 0x10000;

// Entries of a window's system menu are named by their command or by their position from 0
// (MF_BYCOMMAND, MF_BYPOSITION). The command that closes the window (SC_CLOSE) is the word
// 0xF060 with its sign.
inline constexpr int kByCommand = 0;
inline constexpr int kByPosition = 1024;
inline constexpr int kCloseCommand = -4000;

// A place on the screen, in pixels.
struct ScreenPoint {
  int x = 0;
  int y = 0;
  friend bool operator==(const ScreenPoint&, const ScreenPoint&) = default;
};

// Part of the screen, in pixels; right and bottom lie outside.
struct ScreenRectangle {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  friend bool operator==(const ScreenRectangle&, const ScreenRectangle&) = default;
};

class Desktop {
 public:
  virtual ~Desktop() = default;

  // Puts a loaded window on the screen; in front when it is there already.
  virtual void show(Form& form) = 0;

  // Takes a window off the screen that stays loaded.
  virtual void hide(Form& form) = 0;

  // Forgets a window that is being unloaded.
  virtual void remove(Form& form) = 0;

  // Puts a loaded window on the screen as the only one of the program that takes input,
  // until it is removed; in front when it is that already.
  virtual void makeModal(Form& form) = 0;

  // Shows a message and pumps until it is answered. An empty title means the
  // application's. Returns one of the answers. Throws ProgramEnded.
  virtual int messageBox(const std::string& text, int style, const std::string& title) = 0;

  // Opens a menu of entries, without its own title, at the mouse, or at the window's middle
  // when that was asked for by a key, and pumps until it has gone. What is chosen is pressed
  // behind that. The default entry is shown as such. The menu's right edge lies at the place
  // (PopupMenu, flags 8).
  virtual void popupMenu(Form& form, const std::vector<MenuEntry*>& entries,
                         const MenuEntry* defaultEntry) = 0;

  virtual void clearClipboard() = 0;
  virtual void setClipboardText(const std::string& text) = 0;

  // The title that the application goes by.
  virtual std::string applicationTitle() const = 0;
  virtual void setApplicationTitle(const std::string& title) = 0;

  // FindWindowA with no class: a number that stands for some program's window of
  // exactly that title, this program's among them; 0 when there is none.
  virtual std::uint32_t findWindow(const std::string& title) = 0;

  // Paints the background of a window's menus; does nothing without a menu.
  virtual void setMenuBackground(Form& form, Colour colour) = 0;

  // Keeps a window above all others, or ends that.
  virtual void setTopmost(Form& form, bool topmost) = 0;

  // RemoveMenu on the window's system menu (GetSystemMenu): takes an entry away. Without
  // the close command a window cannot be closed by its user, by whatever means.
  virtual void removeFromSystemMenu(Form& form, int entry, int flags) = 0;

  virtual ScreenPoint cursorPosition() const = 0;

  // The place of a shown window, its frame included.
  virtual ScreenRectangle windowRectangle(const Form& form) const = 0;
  virtual void moveWindow(Form& form, const ScreenRectangle& place) = 0;

  // Puts a window, on the screen or not yet, so many twips (15 to a pixel at 100 percent)
  // right of and below the upper left corner of another one, but never beyond the edges of
  // that one's screen. Nothing happens where programs do not place their windows.
  virtual void placeBeside(Form& form, const Form& other, int right, int below) = 0;

  // DrawFocusRect on the whole screen: inverts the border of a rectangle, one pixel
  // wide, so that a second call with the same one takes it away.
  virtual void drawFocusRectangle(const ScreenRectangle& border) = 0;

  // Where programs do not place their windows (Wayland): lets the user, who holds the
  // left button down, move the window until the button is released. False elsewhere.
  virtual bool moveBySystem(Form& form) = 0;
};

}  // namespace veltrin
