// SPDX-License-Identifier: GPL-3.0-or-later
// What the random user does to a window and its controls.
#include <algorithm>
#include <array>

#include "controls/LVListBox.h"
#include "forms/image.h"
#include "forms/option_button.h"
#include "monkey/monkey.h"

namespace veltrin {
namespace {

// What people type where a host name or a number is asked for.
constexpr std::array<const char*, 18> kTexts = {"",
                                                "1",
                                                "3",
                                                "25",
                                                "near.example",
                                                "192.0.2.7",
                                                "2001:db8::7",
                                                "..\\..\\x",
                                                "a/b",
                                                "con",
                                                "-n 5",
                                                "\"",
                                                "1,000",
                                                "1e9",
                                                "-1",
                                                "\xC3\xA9t\xC3\xA9.example",
                                                "0",
                                                " 7 "};

// Captions of the buttons that close their windows.
constexpr std::array<const char*, 3> kEnds = {"Quit", "Exit", "Close"};

}  // namespace

void Monkey::actOnWindow(Form& form) {
  if (wantsToClose(form)) {
    simulation_->desktop.closeWindow(form);
    return;
  }
  if (oneIn(20)) form.moveMouse(MouseButton::None);
  if (oneIn(4)) useMouse(form);
  if (form.width > 0 && oneIn(8)) resize(form);
  const auto& controls = form.controls();
  actOnControl(*controls[below(static_cast<std::uint32_t>(controls.size()))]);
}

// The menu stays longer than its tools, and so does nearly everything while windows are
// gathered.
bool Monkey::wantsToClose(const Form& form) {
  switch (mood_) {
    case Mood::Leaving:
      return oneIn(3);
    case Mood::Gathering:
      return oneIn(1500);
    default:
      return oneIn(form.name() == "startup" ? 1500 : 100);
  }
}

// At its frame, to any size.
void Monkey::resize(Form& form) {
  if (!simulation_->desktop.takesInput(form)) return;
  form.resizeTo(static_cast<int>(below(40'000)), static_cast<int>(below(20'000)));
}

// The mouse on the window itself, now and then at a place with a meaning of its own.
void Monkey::useMouse(Form& form) {
  SimulatedDesktop& desktop = simulation_->desktop;
  const MouseButton button = oneIn(3) ? MouseButton::Right : MouseButton::Left;
  const int x = static_cast<int>(oneIn(8) ? 515 + 2 * below(2) : below(7000));
  desktop.cursor = {static_cast<int>(below(1920)), static_cast<int>(below(1080))};
  desktop.choice = [this, &form]() -> MenuEntry* {
    return oneIn(3) ? dynamic_cast<MenuEntry*>(form.find("mnucloseme")) : nullptr;
  };
  switch (below(3)) {
    case 0:
      desktop.pressMouse(form, button, x);
      break;
    case 1:
      desktop.moveMouse(form, oneIn(3) ? MouseButton::None : button, x);
      break;
    default:
      desktop.releaseMouse(form, button, x);
  }
  desktop.choice = nullptr;
}

void Monkey::actOnControl(Control& control) {
  SimulatedDesktop& desktop = simulation_->desktop;
  if (oneIn(4)) desktop.moveMouse(control);
  if (oneIn(8)) drag(control);
  if (auto* button = dynamic_cast<CommandButton*>(&control)) {
    actOnButton(*button);
  } else if (auto* text = dynamic_cast<TextBox*>(&control)) {
    actOnText(*text);
  } else if (auto* combo = dynamic_cast<ComboBox*>(&control)) {
    desktop.type(*combo, textFor(*combo));
    desktop.leave(*combo);
  } else if (auto* option = dynamic_cast<OptionButton*>(&control)) {
    desktop.click(*option);
  } else if (auto* box = dynamic_cast<CheckBox*>(&control)) {
    desktop.click(*box);
  } else if (auto* list = dynamic_cast<LVListBox*>(&control)) {
    actOnList(*list);
  } else if (auto* entry = dynamic_cast<MenuEntry*>(&control)) {
    if (!isEnd(*entry->form(), entry->caption) || mayEnd()) desktop.choose(*entry);
  } else if (auto* tester = dynamic_cast<pingtester*>(control.form())) {
    desktop.click(oneIn(3) ? tester->Command2 : tester->Command1);
  } else if (auto* label = dynamic_cast<Label*>(&control)) {
    desktop.click(*label);
  } else if (auto* image = dynamic_cast<Image*>(&control)) {
    desktop.click(*image);
  }
}

// The button down, anywhere, and perhaps never up.
void Monkey::drag(Control& control) {
  SimulatedDesktop& desktop = simulation_->desktop;
  const MouseButton button = oneIn(4) ? MouseButton::Right : MouseButton::Left;
  desktop.pressMouse(control, button);
  desktop.cursor = {static_cast<int>(below(1920)), static_cast<int>(below(1080))};
  desktop.moveMouse(control, button);
  if (!oneIn(4)) desktop.releaseMouse(control, button);
}

// Lines that may be gone by now, as another life of the list is told now and then.
void Monkey::actOnList(LVListBox& list) {
  if (!simulation_->desktop.takesInput(*list.form())) return;
  const std::size_t line = below(static_cast<std::uint32_t>(list.ListCount()) + 2);
  const std::uint64_t life = list.ListView1.life() - (oneIn(6) ? 1 : 0);
  switch (below(8)) {
    case 0:
      return list.takeSelection({line, line / 2}, life);
    case 1:
      return list.clickItem(line, life);
    case 2:
      return list.tick(line, life);
    case 3:
      list.StartEdit();
      return list.endEdit(line, life, typedText());
    case 4:
      list.pressKey(static_cast<std::int16_t>(below(256)), static_cast<std::int16_t>(below(8)));
      return list.releaseKey(0, 0);
    case 5:
      list.typeKey(static_cast<std::int16_t>(below(256)));
      return;
    case 6:
      return list.doubleClick();
    default:
      return list.clickList();
  }
}

bool Monkey::isEnd(const Form& form, const std::string& caption) {
  return std::find(kEnds.begin(), kEnds.end(), caption) != kEnds.end() || form.name() == "setlang";
}

bool Monkey::mayEnd() { return mood_ == Mood::Leaving || oneIn(mood_ == Mood::Roaming ? 5 : 40); }

void Monkey::actOnButton(CommandButton& button) {
  const bool isKept = isEnd(*button.form(), button.caption) && !mayEnd();
  if (!isKept) simulation_->desktop.click(button);
}

void Monkey::actOnText(TextBox& box) {
  const std::size_t length = box.text.get().size();
  if (oneIn(4)) {
    simulation_->desktop.doubleClick(box);
  } else if (length > 0 && oneIn(2) && simulation_->desktop.takesInput(*box.form())) {
    const std::size_t place = below(static_cast<std::uint32_t>(length));
    box.edit(place, std::min<std::size_t>(length - place, below(20)), typedText());
  } else {
    simulation_->desktop.type(box, typedText());
  }
}

// One of what a combo box offers, or anything else.
std::string Monkey::textFor(const ComboBox& box) {
  const std::vector<std::string>& items = box.items.get();
  if (items.empty() || oneIn(2)) return typedText();
  return items[below(static_cast<std::uint32_t>(items.size()))];
}

std::string Monkey::typedText() {
  if (oneIn(20)) return std::string(below(3000), 'x');
  return kTexts[below(static_cast<std::uint32_t>(kTexts.size()))];
}

}  // namespace veltrin
