// SPDX-License-Identifier: GPL-3.0-or-later
// The screen of the simulated platform: what was shown, said and copied.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/command_button.h"
#include "forms/image.h"
#include "forms/label.h"
#include "forms/menu_entry.h"
#include "forms/option_button.h"
#include "forms/text_box.h"
#include "platform/desktop.h"
#include "support/journal.h"
#include "support/simulated_loop.h"

namespace veltrin {

class SimulatedDesktop : public Desktop, public Journalled {
 public:
  explicit SimulatedDesktop(SimulatedLoop& loop) : loop_(loop) {}

  void show(Form& form) override;
  void hide(Form& form) override;
  void remove(Form& form) override;
  void makeModal(Form& form) override;
  void popupMenu(Form& form, const std::vector<MenuEntry*>& entries,
                 const MenuEntry* defaultEntry) override;
  int messageBox(const std::string& text, int style, const std::string& title) override;
  void clearClipboard() override {
    note("clear clipboard");
    clipboard.clear();
  }
  void setClipboardText(const std::string& text) override {
    note("copy");
    clipboard += text;
  }
  std::string applicationTitle() const override { return title_; }
  void setApplicationTitle(const std::string& title) override {
    note("application title " + title);
    title_ = title;
  }
  std::uint32_t findWindow(const std::string& title) override;
  void setMenuBackground(Form& form, Colour colour) override { menuColours[&form] = colour; }
  void setTopmost(Form& form, bool above) override;
  void removeFromSystemMenu(Form& form, int entry, int flags) override;
  ScreenPoint cursorPosition() const override { return cursor; }
  ScreenRectangle windowRectangle(const Form& form) const override;
  void moveWindow(Form& form, const ScreenRectangle& place) override { places[&form] = place; }
  void placeBeside(Form& form, const Form& other, int right, int below) override;
  void drawFocusRectangle(const ScreenRectangle& border) override;
  bool moveBySystem(Form& /*form*/) override { return movesBySystem; }

  // A message that was shown.
  struct Message {
    std::int64_t moment = 0;  // ms of the virtual clock
    std::string text;
    int style = 0;
    std::string title;
  };
  std::vector<Message> messages;

  // How the user answers the messages to come: which button, and how long that
  // takes. Behind the last, `habit` answers all.
  struct Answer {
    int button = kAnswerOk;
    std::int64_t delay = 0;  // ms
  };
  std::deque<Answer> answers;
  Answer habit;

  std::string clipboard;
  std::vector<Form*> shown;  // the last one is in front
  std::set<const Form*> topmost;
  std::set<const Form*> closeless;  // windows whose close command was taken away
  std::map<const Form*, Colour> menuColours;
  ScreenPoint cursor;
  std::map<const Form*, ScreenRectangle> places;  // of the windows
  std::vector<ScreenRectangle> focusRectangles;   // every drawing, in order
  std::vector<ScreenRectangle> visibleBorders;    // those that stand on the screen now
  bool movesBySystem = false;

  // A menu that was opened, and what its user does with it; nothing chooses nothing.
  struct Popup {
    std::vector<std::string> entries;
    std::string defaultEntry;
    friend bool operator==(const Popup&, const Popup&) = default;
  };
  std::vector<Popup> popups;
  std::function<MenuEntry*()> choice;
  std::function<void(Form&)> onModal;     // called when a window comes up before all others
  std::vector<std::string> otherWindows;  // titles of other programs' windows

  // Whether the user can reach a window: it is shown, and no message or modal
  // window stands before it.
  bool takesInput(const Form& form) const;

  // What the user does now. Nothing happens in a window that takes no input.
  void click(CommandButton& button);
  void type(TextBox& box, const std::string& text);
  void type(ComboBox& box, const std::string& text);
  void doubleClick(TextBox& box);
  void click(Label& label);
  void click(Image& image);
  void click(CheckBox& box);
  void click(OptionButton& button);
  void choose(MenuEntry& entry);
  void leave(ComboBox& box);
  void moveMouse(Control& control, MouseButton button = MouseButton::None, int x = 0);
  void pressMouse(Control& control, MouseButton button, int x = 0);
  void releaseMouse(Control& control, MouseButton button, int x = 0);
  void moveMouse(Form& form, MouseButton button = MouseButton::None, int x = 0);
  void pressMouse(Form& form, MouseButton button, int x = 0);
  void releaseMouse(Form& form, MouseButton button, int x = 0);
  void closeWindow(Form& form);

 private:
  SimulatedLoop& loop_;
  std::string title_ = "Veltrin";
  std::vector<Form*> modal_;
  int openMessages_ = 0;
};

}  // namespace veltrin
