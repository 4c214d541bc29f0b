// SPDX-License-Identifier: GPL-3.0-or-later
#include "monkey/monkey.h"

#include <algorithm>
#include <array>

#include "controls/LVListBox.h"
#include "controls/bkCProg.h"
#include "forms/animation.h"
#include "forms/option_button.h"
#include "forms/picture_box.h"
#include "frame/setlang.h"
#include "route/route_values.h"
#include "sysinfo/frmPrint.h"
#include "text/statement.h"
#include "text/strings.h"

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

// Windows that a user opens from the menu.
constexpr std::array<WindowName, 7> kWindows = {
    WindowName::pingtester, WindowName::trace,      WindowName::indepth, WindowName::Stability,
    WindowName::MonOut,     WindowName::frmNetwork, WindowName::frmIP};

// The settings of an installation with a file for all rated speeds but the lowest.
const char* const kInstallation =
    "[Installation]\r\n"
    "DownloadTestUrl1=http://files.example/large\r\n"
    "DownloadTestUrl2=http://files.example/large\r\n"
    "DownloadTestUrl3=http://files.example/large\r\n"
    "DownloadTestUrl4=http://files.example/large\r\n"
    "DownloadTestUrl5=http://files.example/large\r\n"
    "DownloadTestUrl6=\r\n";

constexpr std::array<const char*, 5> kSpeeds = {"512", "3,000", "9,000", "40,000", "100,000"};

// Captions of the buttons that close their windows.
constexpr std::array<const char*, 3> kEnds = {"Quit", "Exit", "Close"};

// Of a text that grows and grows, the last bytes tell one state from another.
constexpr std::size_t kLastBytes = 300;

constexpr std::uint64_t kDigestSeed = 1469598103934665603ULL;  // FNV-1a
constexpr std::uint64_t kDigestPrime = 1099511628211ULL;

}  // namespace

MonkeyResult Monkey::run(std::uint64_t events) {
  wanted_ = events;
  result_ = {};
  result_.digest = kDigestSeed;
  while (result_.events < wanted_) {
    startProgram();
    runProgram();
  }
  return result_;
}

void Monkey::startProgram() {
  simulation_ = std::make_unique<Simulation>();
  simulation_->profiles.contents[simulation_->files.programFolder() + "\\installation.ini"] =
      kInstallation;
  failedStarts_ = 0;
  ++result_.programs;
  simulation_->processes.tool =
      [this](const std::string&) -> std::optional<std::vector<ToolWrite>> {
    ++result_.tools;
    if (oneIn(50)) {
      ++failedStarts_;
      return std::nullopt;
    }
    return writes(toolText());
  };
  simulation_->icmp.reply = [this](const auto&) -> std::optional<std::uint32_t> {
    ++result_.echoes;
    constexpr std::uint32_t kLongest = 900;  // ms
    return oneIn(3) ? std::nullopt : std::optional(below(kLongest));
  };
  provideTraffic();
  if (oneIn(2)) simulation_->wmi.answers["Select * from Win32_PhysicalMemory"] = {};
  if (oneIn(4)) simulation_->program().LanguageId = kDutch;
  chooseLanguage(simulation_->program().LanguageId, simulation_->program().texts);
  simulation_->program().writeSetting("Settings", "Rated Speed", kSpeeds[below(kSpeeds.size())]);
  openWindow();
}

// Cards come and go, and their figures are of any size.
void Monkey::provideTraffic() {
  simulation_->program().start.PdhQuery = 1;
  SimulatedCounters& counters = simulation_->counters;
  counters.onCall = [this, &counters] {
    if (oneIn(30)) counters.enumStatus = oneIn(3) ? kPdhMoreData : 0;
    if (oneIn(30)) counters.addStatus = oneIn(3) ? kPdhMoreData : 0;
    if (oneIn(30)) counters.instances.assign(below(9), "Network card");
    if (counters.paths.empty()) return;
    const std::string& path =
        counters.paths[below(static_cast<std::uint32_t>(counters.paths.size()))];
    counters.values[path] = oneIn(20) ? 1e300 : below(200'000'000);
  };
}

// Printers come and go, too.
void Monkey::changePrinters() {
  SimulatedPrinters& printers = simulation_->printers;
  printers.jobsUntilRefusal = oneIn(4) ? static_cast<int>(below(3)) : -1;
  printers.names = oneIn(3) ? std::vector<std::string>() : std::vector<std::string>{"Laser", "Ink"};
  printers.defaultName = printers.names.empty() ? "" : printers.names[below(2)];
}

// A pipe whose tool could not be started stays open, both its ends; every other
// handle is closed when the program has ended.
void Monkey::runProgram() {
  scheduleNext();
  constexpr std::int64_t kForever = INT64_MAX / 2;
  simulation_->loop.run(kForever);
  result_.failures += static_cast<std::uint64_t>(simulation_->loop.gate().escapedFailures());
  result_.openHandles += simulation_->processes.openHandles() - 2 * failedStarts_;
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
    act();
  });
}

void Monkey::act() {
  Program& program = simulation_->program();
  if (oneIn(40)) changeFaults();
  simulation_->desktop.habit = {oneIn(2) ? kAnswerYes : kAnswerNo,
                                static_cast<std::int64_t>(below(2000))};
  if (oneIn(60)) {
    program.show<setlang>();
  } else if (oneIn(60)) {
    openWindow();
  } else if (oneIn(400)) {
    openInDepth();
  } else if (oneIn(300)) {
    program.tools.show(WindowName::frmSysInfo);  // before all others while it is open
  } else if (oneIn(2000)) {
    program.tools.show(WindowName::mtutest);  // no other window takes input for minutes
  } else if (oneIn(1000)) {
    program.tools.show(WindowName::testdl);  // nor here, until the file has come
  }
  if (oneIn(2)) serve();
  const auto& shown = simulation_->desktop.shown;
  if (shown.empty()) return;
  Form& form = *shown[below(static_cast<std::uint32_t>(shown.size()))];
  const auto alive = form.shared_from_this();
  actOnWindow(form);
  lookAt(form);
}

void Monkey::openWindow() { simulation_->program().tools.show(kWindows[below(kWindows.size())]); }

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

// Lets a download go on, in which a server may take back what it told, or ends it.
void Monkey::serve() {
  auto& asked = simulation_->downloads.asked;
  if (asked.empty()) return;
  const auto read = asked[below(static_cast<std::uint32_t>(asked.size()))];
  constexpr std::uint32_t kLargest = 5'000'000;
  constexpr std::uint32_t kSteps = 40;
  if (!read->givenUp && !oneIn(kSteps)) {
    return read->comeProgress(below(kLargest), oneIn(4) ? 0 : kLargest);
  }
  asked.erase(std::find(asked.begin(), asked.end(), read));
  if (read->givenUp) return;
  ++result_.downloads;
  if (oneIn(3)) {
    read->comeFailure(below(kLargest));
  } else {
    read->comeBody(std::string(below(10'000), 'x'));
  }
}

void Monkey::actOnWindow(Form& form) {
  if (oneIn(150)) {
    simulation_->desktop.closeWindow(form);
    return;
  }
  if (oneIn(20)) form.moveMouse(MouseButton::None);
  if (oneIn(4)) useMouse(form);
  if (form.width > 0 && oneIn(8)) resize(form);
  const auto& controls = form.controls();
  actOnControl(*controls[below(static_cast<std::uint32_t>(controls.size()))]);
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
  if (auto* button = dynamic_cast<CommandButton*>(&control)) {
    actOnButton(*button);
  } else if (auto* text = dynamic_cast<TextBox*>(&control)) {
    actOnText(*text);
  } else if (auto* combo = dynamic_cast<ComboBox*>(&control)) {
    desktop.type(*combo, textFor(*combo));
    desktop.leave(*combo);
  } else if (auto* option = dynamic_cast<OptionButton*>(&control)) {
    if (desktop.takesInput(*control.form())) option->press();
  } else if (auto* box = dynamic_cast<CheckBox*>(&control)) {
    desktop.click(*box);
  } else if (auto* entry = dynamic_cast<MenuEntry*>(&control)) {
    desktop.choose(*entry);
  } else if (auto* tester = dynamic_cast<pingtester*>(control.form())) {
    desktop.click(oneIn(3) ? tester->Command2 : tester->Command1);
  } else if (auto* label = dynamic_cast<Label*>(&control)) {
    desktop.click(*label);
  }
}

void Monkey::actOnButton(CommandButton& button) {
  const bool ends = std::find(kEnds.begin(), kEnds.end(), button.caption.get()) != kEnds.end() ||
                    button.form()->name() == "setlang";
  if (ends && !oneIn(5)) return;
  simulation_->desktop.click(button);
}

void Monkey::actOnText(TextBox& box) {
  if (oneIn(4)) {
    simulation_->desktop.doubleClick(box);
  } else {
    simulation_->desktop.type(box, typedText());
  }
}

void Monkey::changeFaults() {
  simulation_->profiles.refuseWriting = oneIn(3);
  simulation_->files.refuseOpening = oneIn(3);
  simulation_->files.refuseWriting = oneIn(3);
  simulation_->loop.failNextTimer = oneIn(4);
  simulation_->processes.failPipes = oneIn(8);
  changePrinters();
  simulation_->processes.readsBeforeError.reset();
  if (oneIn(8)) simulation_->processes.readsBeforeError = static_cast<int>(below(4));
}

void Monkey::lookAt(const Form& form) {
  remember(form.name() + form.caption.get());
  for (const Control* control : form.controls()) {
    if (const auto* label = dynamic_cast<const Label*>(control)) remember(label->caption);
    if (const auto* text = dynamic_cast<const TextBox*>(control)) {
      remember(std::to_string(text->text.get().size()));
      remember(Right(text->text.get(), kLastBytes));
    }
    if (const auto* button = dynamic_cast<const CommandButton*>(control)) {
      remember(button->caption.get() + (button->enabled ? "+" : "-"));
    }
    if (const auto* list = dynamic_cast<const LVListBox*>(control)) {
      remember(std::to_string(list->ListCount()) + " " + std::to_string(list->ListIndex()));
    }
    if (const auto* option = dynamic_cast<const OptionButton*>(control)) {
      remember(option->value() ? "+" : "-");
    }
    if (const auto* dial = dynamic_cast<const bkCProg*>(control)) {
      remember(std::to_string(dial->Value) + (dial->visible ? "+" : "-"));
    }
    if (const auto* picture = dynamic_cast<const PictureBox*>(control)) {
      for (const Polyline& line : picture->lines()) {
        remember(std::to_string(line.points.back().y) + (picture->visible ? "+" : "-"));
      }
    }
  }
}

void Monkey::remember(const std::string& seen) {
  for (const char character : seen) {
    result_.digest ^= static_cast<unsigned char>(character);
    result_.digest *= kDigestPrime;
  }
}

std::vector<ToolWrite> Monkey::writes(const std::string& text) {
  std::vector<ToolWrite> pieces;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t length = 1 + below(oneIn(2) ? 400 : 12);
    const std::int64_t silence = oneIn(6) ? below(4000) : below(30);
    pieces.push_back({silence, text.substr(at, length)});
    at += length;
  }
  return pieces;
}

std::string Monkey::toolText() {
  switch (below(8)) {
    case 0:
      return traceText();
    case 1:
      return "Ping request could not find host x. Please check the name and try again.\r\n";
    case 2:
      return {};
    case 3: {
      std::string garbage(below(700), '\0');
      for (char& character : garbage) character = static_cast<char>(below(256));
      return garbage;
    }
    default:
      return pingText();
  }
}

std::string Monkey::pingText() {
  if (oneIn(5)) return pingTimeout();
  return pingReply(static_cast<int>(below(oneIn(4) ? 3 : 20000)));
}

std::string Monkey::traceText() {
  std::string text = "\r\nTracing route to x [192.0.2.7]\r\nover a maximum of 30 hops:\r\n\r\n";
  for (std::uint32_t hop = 1 + below(12); hop > 0; --hop) {
    text += oneIn(4) ? "  1     *        *        *     Request timed out.\r\n"
                     : "  1    <1 ms    12 ms     *     192.0.2.7 \r\n";
    if (oneIn(3)) text += "                              0/ 100 =  0%   |\r\n";
  }
  return text + "\r\nTrace complete.\r\n";
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
