// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/simulated_desktop.h"

#include <algorithm>
#include <memory>

namespace veltrin {
namespace {

constexpr std::uint32_t kOwnApplicationWindow = 1;
constexpr std::uint32_t kFirstWindow = 2;

}  // namespace

void SimulatedDesktop::show(Form& form) {
  note("show " + form.name());
  std::erase(shown, &form);
  shown.push_back(&form);
}

void SimulatedDesktop::hide(Form& form) {
  note("hide " + form.name());
  std::erase(shown, &form);
}

void SimulatedDesktop::remove(Form& form) {
  note("remove " + form.name());
  std::erase(shown, &form);
  std::erase(modal_, &form);
  topmost.erase(&form);
  closeless.erase(&form);
  menuColours.erase(&form);
  places.erase(&form);
}

void SimulatedDesktop::makeModal(Form& form) {
  show(form);
  if (std::find(modal_.begin(), modal_.end(), &form) != modal_.end()) return;
  modal_.push_back(&form);
  if (onModal) onModal(form);
}

void SimulatedDesktop::popupMenu(Form& form, const std::vector<MenuEntry*>& entries,
                                 const MenuEntry* defaultEntry) {
  note("popup of " + form.name());
  Popup popup;
  for (const MenuEntry* entry : entries) popup.entries.push_back(entry->caption);
  if (defaultEntry != nullptr) popup.defaultEntry = defaultEntry->caption;
  popups.push_back(popup);
  MenuEntry* const chosen = choice ? choice() : nullptr;
  if (chosen != nullptr) chosen->press();
}

int SimulatedDesktop::messageBox(const std::string& text, int style, const std::string& title) {
  note("message " + text);
  messages.push_back({loop_.milliseconds(), text, style, title.empty() ? title_ : title});
  Answer answer = habit;
  if (!answers.empty()) {
    answer = answers.front();
    answers.pop_front();
  }
  struct Open {
    int& count;
    explicit Open(int& messages) : count(messages) { ++count; }
    ~Open() { --count; }
    Open(const Open&) = delete;
    Open& operator=(const Open&) = delete;
  } const open(openMessages_);
  const auto answered = std::make_shared<bool>(false);
  loop_.after(answer.delay, [answered] { *answered = true; });
  loop_.pumpUntil([&answered] { return *answered; });
  return answer.button;
}

std::uint32_t SimulatedDesktop::findWindow(const std::string& title) {
  if (title == title_) return kOwnApplicationWindow;
  std::uint32_t handle = kFirstWindow;
  for (const Form* form : shown) {
    if (form->caption == title) return handle;
    ++handle;
  }
  for (const std::string& other : otherWindows) {
    if (other == title) return handle;
    ++handle;
  }
  return 0;
}

void SimulatedDesktop::setTopmost(Form& form, bool above) {
  note(form.name() + (above ? " above all" : " among all"));
  if (above) {
    topmost.insert(&form);
  } else {
    topmost.erase(&form);
  }
}

void SimulatedDesktop::removeFromSystemMenu(Form& form, int entry, int flags) {
  note("remove from system menu " + std::to_string(entry) + " " + std::to_string(flags));
  if (entry == kCloseCommand && flags == kByCommand) closeless.insert(&form);
}

ScreenRectangle SimulatedDesktop::windowRectangle(const Form& form) const {
  const auto found = places.find(&form);
  return found == places.end() ? ScreenRectangle{} : found->second;
}

void SimulatedDesktop::placeBeside(Form& form, const Form& other, int right, int below) {
  note("place " + form.name() + " beside " + other.name());
  constexpr int kTwipsOfPixel = 15;
  const ScreenRectangle there = windowRectangle(other);
  const ScreenRectangle here = windowRectangle(form);
  const int left = there.left + right / kTwipsOfPixel;
  const int top = there.top + below / kTwipsOfPixel;
  places[&form] = {left, top, left + here.right - here.left, top + here.bottom - here.top};
}

void SimulatedDesktop::drawFocusRectangle(const ScreenRectangle& border) {
  focusRectangles.push_back(border);
  if (std::erase(visibleBorders, border) == 0) visibleBorders.push_back(border);
}

bool SimulatedDesktop::takesInput(const Form& form) const {
  const bool isShown = std::find(shown.begin(), shown.end(), &form) != shown.end();
  const bool behindModal = !modal_.empty() && modal_.back() != &form;
  return isShown && openMessages_ == 0 && !behindModal;
}

void SimulatedDesktop::click(CommandButton& button) {
  if (takesInput(*button.form())) button.press();
}

void SimulatedDesktop::type(TextBox& box, const std::string& text) {
  if (takesInput(*box.form())) box.enter(text);
}

void SimulatedDesktop::type(ComboBox& box, const std::string& text) {
  if (takesInput(*box.form())) box.enter(text);
}

void SimulatedDesktop::doubleClick(TextBox& box) {
  if (takesInput(*box.form())) box.doubleClick();
}

void SimulatedDesktop::click(Label& label) {
  if (takesInput(*label.form())) label.press();
}

void SimulatedDesktop::click(Image& image) {
  if (takesInput(*image.form())) image.press();
}

void SimulatedDesktop::click(CheckBox& box) {
  if (takesInput(*box.form())) box.press();
}

void SimulatedDesktop::click(OptionButton& button) {
  if (takesInput(*button.form())) button.press();
}

void SimulatedDesktop::choose(MenuEntry& entry) {
  if (takesInput(*entry.form())) entry.press();
}

void SimulatedDesktop::leave(ComboBox& box) {
  if (takesInput(*box.form())) box.leave();
}

void SimulatedDesktop::moveMouse(Control& control, MouseButton button, int x) {
  if (takesInput(*control.form())) control.moveMouse(button, x);
}

void SimulatedDesktop::pressMouse(Control& control, MouseButton button, int x) {
  if (takesInput(*control.form())) control.pressMouse(button, x);
}

void SimulatedDesktop::releaseMouse(Control& control, MouseButton button, int x) {
  if (takesInput(*control.form())) control.releaseMouse(button, x);
}

void SimulatedDesktop::moveMouse(Form& form, MouseButton button, int x) {
  if (takesInput(form)) form.moveMouse(button, x);
}

void SimulatedDesktop::pressMouse(Form& form, MouseButton button, int x) {
  if (takesInput(form)) form.pressMouse(button, x);
}

void SimulatedDesktop::releaseMouse(Form& form, MouseButton button, int x) {
  if (takesInput(form)) form.releaseMouse(button, x);
}

void SimulatedDesktop::closeWindow(Form& form) {
  if (takesInput(form) && closeless.count(&form) == 0) form.close();
}

}  // namespace veltrin
