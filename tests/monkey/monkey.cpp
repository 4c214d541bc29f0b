#include "monkey/monkey.h"

#include <array>

#include "forms/animation.h"
#include "frame/setlang.h"

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
  failedStarts_ = 0;
  ++result_.programs;
  simulation_->processes.tool =
      [this](const std::string&) -> std::optional<std::vector<ToolWrite>> {
    ++result_.echoes;
    if (oneIn(50)) {
      ++failedStarts_;
      return std::nullopt;
    }
    return writes(toolText());
  };
  if (oneIn(4)) simulation_->program().LanguageId = kDutch;
  chooseLanguage(simulation_->program().LanguageId, simulation_->program().texts);
  simulation_->program().show<pingtester>();
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
    program.show<pingtester>();
  }
  const auto& shown = simulation_->desktop.shown;
  if (shown.empty()) return;
  Form& form = *shown[below(static_cast<std::uint32_t>(shown.size()))];
  const auto alive = form.shared_from_this();
  actOnWindow(form);
  lookAt(form);
}

void Monkey::actOnWindow(Form& form) {
  if (oneIn(150)) {
    simulation_->desktop.closeWindow(form);
    return;
  }
  const auto& controls = form.controls();
  actOnControl(*controls[below(static_cast<std::uint32_t>(controls.size()))]);
}

void Monkey::actOnControl(Control& control) {
  SimulatedDesktop& desktop = simulation_->desktop;
  if (auto* button = dynamic_cast<CommandButton*>(&control)) {
    const bool ends = button->caption == "Quit" || button->form()->name() == "setlang";
    if (!ends || oneIn(5)) desktop.click(*button);
  } else if (auto* text = dynamic_cast<TextBox*>(&control)) {
    if (oneIn(4)) {
      desktop.doubleClick(*text);
    } else {
      desktop.type(*text, typedText());
    }
  } else if (auto* combo = dynamic_cast<ComboBox*>(&control)) {
    desktop.type(*combo, typedText());
    combo->leave();
  } else if (auto* tester = dynamic_cast<pingtester*>(control.form())) {
    desktop.click(oneIn(3) ? tester->Command2 : tester->Command1);
  }
}

void Monkey::changeFaults() {
  simulation_->profiles.refuseWriting = oneIn(3);
  simulation_->files.refuseOpening = oneIn(3);
  simulation_->files.refuseWriting = oneIn(3);
  simulation_->loop.failNextTimer = oneIn(4);
  simulation_->processes.failPipes = oneIn(8);
  simulation_->processes.readsBeforeError.reset();
  if (oneIn(8)) simulation_->processes.readsBeforeError = static_cast<int>(below(4));
}

void Monkey::lookAt(const Form& form) {
  remember(form.name() + form.caption.get());
  for (const Control* control : form.controls()) {
    if (const auto* label = dynamic_cast<const Label*>(control)) remember(label->caption);
    if (const auto* text = dynamic_cast<const TextBox*>(control)) remember(text->text);
    if (const auto* button = dynamic_cast<const CommandButton*>(control)) {
      remember(button->caption.get() + (button->enabled ? "+" : "-"));
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
      return pingTimeout();
    case 1:
      return "Ping request could not find host x. Please check the name and try again.\r\n";
    case 2:
      return {};
    case 3: {
      std::string garbage(below(700), '\0');
      for (char& character : garbage) character = static_cast<char>(below(256));
      return garbage;
    }
    case 4:
      return pingReply(static_cast<int>(below(3)));
    default:
      return pingReply(static_cast<int>(below(20000)));
  }
}

std::string Monkey::typedText() {
  if (oneIn(20)) return std::string(below(3000), 'x');
  return kTexts[below(static_cast<std::uint32_t>(kTexts.size()))];
}

}  // namespace veltrin
