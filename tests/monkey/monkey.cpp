// SPDX-License-Identifier: GPL-3.0-or-later
#include "monkey/monkey.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frame/setlang.h"
#include "frame/starter.h"
#include "frame/startup.h"
#include "mtu/pingit.h"
#include "mtu/setmtu.h"
#include "route/route_values.h"

namespace veltrin {
namespace {

// Windows that open beside all others.
constexpr std::array kBeside = {WindowName::pingtester, WindowName::trace,  WindowName::indepth,
                                WindowName::Stability,  WindowName::MonOut, WindowName::frmNetwork,
                                WindowName::frmIP};

// Windows that come up before all others, and which lead on to others yet.
constexpr std::array kAbove = {WindowName::frmSysInfo, WindowName::mtutest, WindowName::testdl};

constexpr std::uint32_t kLongestMood = 400;  // things to do

}  // namespace

MonkeyResult Monkey::run(std::uint64_t events) {
  wanted_ = events;
  result_ = {};
  toolsBefore_ = idle_ = 0;
  while (result_.events < wanted_) {
    provideWorld();
    startProgram();
    runProgram();
  }
  return result_;
}

// As its user starts it, or with one tool and the menu never seen.
void Monkey::startProgram() {
  ++result_.programs;
  open_ = {};
  mood_ = Mood::Gathering;
  moodLeft_ = kLongestMood;
  Program& program = simulation_->program();
  if (oneIn(4)) program.LanguageId = kDutch;
  chooseLanguage(program.LanguageId, program.texts);
  if (oneIn(4)) {
    openTool();
  } else {
    simulation_->loop.after(0, [&program] { program.show<starter>(); });
  }
}

// A pipe whose tool could not be started stays open, both its ends; every other
// handle is closed when the program has ended.
void Monkey::runProgram() {
  scheduleNext();
  constexpr std::int64_t kForever = INT64_MAX / 2;
  simulation_->loop.run(kForever);
  result_.failures += static_cast<std::uint64_t>(simulation_->loop.gate().escapedFailures());
  result_.openHandles += simulation_->processes.openHandles() - 2 * failedStarts_;
  result_.openHandles += static_cast<std::uint64_t>(simulation_->processList.openHandles +
                                                    simulation_->registry.openKeys);
  result_.messages += simulation_->desktop.messages.size();
  result_.saves += simulation_->files.contents.size();
  result_.pages += simulation_->printers.jobs.size();
  result_.refusedPages += static_cast<std::uint64_t>(simulation_->printers.refusals);
  remember(std::to_string(simulation_->loop.milliseconds()) + simulation_->settings());
  simulation_.reset();
}

void Monkey::scheduleNext() {
  if (result_.events >= wanted_) {
    simulation_->loop.after(0, [this] { simulation_->loop.gate().end(); });
    return;
  }
  constexpr std::uint32_t kLongestPause = 1500;
  const std::int64_t pause = oneIn(3) ? 0 : below(kLongestPause);
  simulation_->loop.after(pause, [this] {
    ++result_.events;
    scheduleNext();
    if (std::exchange(toolsBefore_, result_.tools) != result_.tools) idle_ = 0;
    result_.longestIdle = std::max(result_.longestIdle, ++idle_);
    act();
  });
}

void Monkey::act() {
  if (oneIn(40)) changeFaults();
  simulation_->desktop.habit = {oneIn(2) ? kAnswerYes : kAnswerNo,
                                static_cast<std::int64_t>(below(2000))};
  if (moodLeft_-- == 0) changeMood();
  if (mood_ != Mood::Leaving) openSomething();
  if (oneIn(2)) serve();
  if (Form* const form = chosenWindow()) {
    const auto alive = form->shared_from_this();
    actOnWindow(*form);
    lookAt(*form);
  }
  takeCensus();
}

// Who gathers windows closes none, and who leaves closes them all: with the last of them
// the program ends.
void Monkey::changeMood() {
  moodLeft_ = below(kLongestMood);
  const std::uint32_t lot = below(10);
  mood_ = lot == 0 ? Mood::Leaving : lot < 4 ? Mood::Gathering : Mood::Roaming;
}

// The tools that come up before all others are rare, as nothing else takes input then, for
// minutes in the search of the MTU.
void Monkey::openSomething() {
  Program& program = simulation_->program();
  const std::uint32_t haste = mood_ == Mood::Gathering ? 1 : 4;
  if (oneIn(60 * haste)) program.show<setlang>();
  if (oneIn(15 * haste)) openTool();
  if (oneIn(400)) openInDepth();
  if (oneIn(30 * haste)) useMenu();
  if (!oneIn(120 * haste)) return;
  const WindowName above = kAbove[below(kAbove.size())];
  // A second search of the MTU inside the first would wait for it and be waited for: nobody
  // gets to the menu, which opens the one, while the other stands before everything.
  const bool isSearching = program.isLoaded<pingit>() || program.isLoaded<setmtu>();
  if (above != WindowName::mtutest || !isSearching) program.tools.show(above);
}

void Monkey::openTool() { simulation_->program().tools.show(kBeside[below(kBeside.size())]); }

// Any button of the menu but the one that ends it.
void Monkey::useMenu() {
  const auto& shown = simulation_->desktop.shown;
  const auto isMenu = [](const Form* form) { return form->name() == nameOf(WindowName::startup); };
  const auto menu = std::find_if(shown.begin(), shown.end(), isMenu);
  if (menu == shown.end()) return;
  const auto alive = (*menu)->shared_from_this();
  auto& buttons = static_cast<startup&>(*alive);
  const std::array<CommandButton*, 10> choices = {
      &buttons.Command1,  &buttons.Command2, &buttons.Command4, &buttons.Command5,
      &buttons.Command6,  &buttons.Command7, &buttons.Command8, &buttons.Command9,
      &buttons.Command10, &buttons.Command12};
  simulation_->desktop.click(*choices[below(choices.size())]);
}

// One that takes input, mostly; any other now and then, to see that it takes none. Null when
// none is on the screen.
Form* Monkey::chosenWindow() {
  const auto& shown = simulation_->desktop.shown;
  if (shown.empty()) return nullptr;
  const auto any = [&] { return shown[below(static_cast<std::uint32_t>(shown.size()))]; };
  if (oneIn(8)) return any();
  const auto takesInput = [this](const Form* form) {
    return simulation_->desktop.takesInput(*form);
  };
  std::vector<Form*> willing;
  std::copy_if(shown.begin(), shown.end(), std::back_inserter(willing), takesInput);
  if (willing.empty()) return any();
  return willing[below(static_cast<std::uint32_t>(willing.size()))];
}

// What is open now, and what was not before.
void Monkey::takeCensus() {
  const OpenWindows now = openWindows(simulation_->program());
  std::uint64_t count = 0;
  for (std::size_t name = 0; name < now.size(); ++name) {
    if (!now[name]) continue;
    ++count;
    if (!open_[name]) ++result_.openings[name];
  }
  open_ = now;
  result_.openTogether = std::max(result_.openTogether, count);
  result_.shownTogether =
      std::max<std::uint64_t>(result_.shownTogether, simulation_->desktop.shown.size());
}

// The window that follows a Hop Stability Test, and is modal. That test cannot come to
// its end while a message or another modal window stands before everything.
void Monkey::openInDepth() {
  Program& program = simulation_->program();
  const auto& shown = simulation_->desktop.shown;
  const bool reachable = std::all_of(shown.begin(), shown.end(), [this](const Form* form) {
    return simulation_->desktop.takesInput(*form);
  });
  if (!reachable) return;
  const std::string hops = typedText();
  program.shared<InDepthValues>().lastBadHop = [hops] { return std::string(hops); };
  program.tools.showModal(WindowName::indepth2);
}

}  // namespace veltrin
