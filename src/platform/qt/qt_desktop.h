// SPDX-License-Identifier: GPL-3.0-or-later
// The screen of the program with windows.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <QPointer>
#include <QWidget>

#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/qt/screen.h"
#include "platform/qt/shown_form.h"
#include "platform/qt/title_board.h"

namespace veltrin {

// Shows forms in windows. One form has one window, from its first showing to its removal.
class QtDesktop : public Desktop {
 public:
  // `looks` gives each form its window.
  QtDesktop(EventLoop& events, const Files& files, std::string applicationTitle, FormLooks looks);
  ~QtDesktop() override;

  // A form that has no look is not shown.
  void show(Form& form) override;
  void hide(Form& form) override;
  void remove(Form& form) override;
  void makeModal(Form& form) override;

  // Nothing for a form that was never shown.
  void popupMenu(Form& form, const std::vector<MenuEntry*>& entries,
                 const MenuEntry* defaultEntry) override;
  int messageBox(const std::string& text, int style, const std::string& title) override;
  void clearClipboard() override;
  void setClipboardText(const std::string& text) override;
  std::string applicationTitle() const override { return applicationTitle_; }
  void setApplicationTitle(const std::string& title) override;
  std::uint32_t findWindow(const std::string& title) override;
  void setMenuBackground(Form& form, Colour colour) override;
  void setTopmost(Form& form, bool topmost) override;

  // For a window that has not been shown yet.
  void removeFromSystemMenu(Form& form, int entry, int flags) override;
  ScreenPoint cursorPosition() const override;

  // An empty place for a form that was never shown, which is not moved either.
  ScreenRectangle windowRectangle(const Form& form) const override;
  void moveWindow(Form& form, const ScreenRectangle& place) override;

  // Nothing happens beside a form that was never shown.
  void placeBeside(Form& form, const Form& other, int right, int below) override;
  void drawFocusRectangle(const ScreenRectangle& border) override;
  bool moveBySystem(Form& form) override;

  // The window of a form; null when it was never shown.
  QWidget* windowOf(const Form& form) const;

 private:
  QWidget* makeWindowOf(Form& form);
  void publishTitles();

  EventLoop& events_;
  const Files& files_;
  std::string applicationTitle_;
  FormLooks looks_;
  std::unique_ptr<TitleBoard> titles_;
  std::unique_ptr<BorderPen> borders_;
  std::map<const Form*, std::unique_ptr<ShownForm>> shown_;
  std::vector<QPointer<QWidget>> removed_;  // windows that wait to be deleted
};

}  // namespace veltrin
