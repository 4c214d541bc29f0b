// SPDX-License-Identifier: GPL-3.0-or-later
// A random user on the simulated platform: starts the program, gathers windows until nearly
// all of them are open at once, clicks, drags, types, sizes and closes them, while tools fall
// silent or break off, texts arrive in odd pieces, downloads come or fail, somebody sets the
// clock, and disks and printers refuse.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "controls/LVListBox.h"
#include "monkey/open_windows.h"
#include "monkey/random_facts.h"
#include "ping/pingtester.h"
#include "support/simulation.h"

namespace veltrin {

// What a run of the monkey came to. Two runs of one seed come to the same.
struct MonkeyResult {
  std::uint64_t events = 0;                       // things the user did
  std::uint64_t programs = 0;                     // programs that were started
  std::uint64_t tools = 0;                        // console tools that were started
  std::uint64_t longestIdle = 0;                  // events between two such starts, at most
  std::uint64_t echoes = 0;                       // that were sent without a tool
  std::uint64_t downloads = 0;                    // that came to an end
  std::uint64_t messages = 0;                     // messages that were shown
  std::uint64_t saves = 0;                        // result files that were written
  std::uint64_t pages = 0;                        // that were printed
  std::uint64_t refusedPages = 0;                 // by their printers, or for want of one
  std::uint64_t digest = 1469598103934665603ULL;  // of everything that could be seen
  std::uint64_t failures = 0;                     // statements that failed outside every rule
  std::uint64_t openHandles = 0;                  // left open by runs that ended well

  // How often each window was opened, in the order of the names, and how many were at most
  // open, hidden ones among them, and on the screen at once.
  std::array<std::uint64_t, kWindowNames.size()> openings{};
  std::uint64_t openTogether = 0;
  std::uint64_t shownTogether = 0;
};

class Monkey {
 public:
  explicit Monkey(std::uint32_t seed) : random_(seed) {}

  // Does so many things, in as many programs as it takes.
  MonkeyResult run(std::uint64_t events);

 private:
  // What the user is about.
  enum class Mood { Gathering, Roaming, Leaving };

  // The life of a program, and what is done next.
  void startProgram();
  void runProgram();
  void scheduleNext();
  void act();
  void changeMood();
  void openSomething();
  void openTool();
  void useMenu();
  void openInDepth();
  Form* chosenWindow();
  void takeCensus();

  // The world around it.
  void provideWorld();
  void provideTools();
  void provideTraffic();
  void provideUpdates();
  void provideMachine();
  void changeFaults();
  void changePrinters();
  void setClock();
  void serve();
  std::vector<ToolWrite> writes(const std::string& text);
  std::string toolText(const std::string& command);
  std::string pingText();
  std::string traceText();

  // What is done to a window.
  void actOnWindow(Form& form);
  bool wantsToClose(const Form& form);
  void useMouse(Form& form);
  void resize(Form& form);
  void actOnControl(Control& control);
  void drag(Control& control);
  void actOnText(TextBox& box);
  void actOnList(LVListBox& list);
  void actOnButton(CommandButton& button);
  static bool isEnd(const Form& form, const std::string& caption);
  bool mayEnd();
  std::string textFor(const ComboBox& box);
  std::string typedText();

  // What is seen.
  void lookAt(const Form& form);
  void remember(const std::string& seen);

  std::uint32_t below(std::uint32_t limit) { return random_() % limit; }
  bool oneIn(std::uint32_t many) { return below(many) == 0; }

  std::mt19937 random_;
  RandomFacts facts_{random_};
  std::uint64_t wanted_ = 0;
  MonkeyResult result_;
  std::unique_ptr<Simulation> simulation_;
  std::size_t failedStarts_ = 0;
  std::uint64_t toolsBefore_ = 0;  // started before the newest event
  std::uint64_t idle_ = 0;         // events since a tool was started
  Mood mood_ = Mood::Gathering;
  std::uint32_t moodLeft_ = 0;  // things to do in it
  OpenWindows open_{};          // when last looked at
  bool isCalm_ = false;         // the line, so that the search of the MTU comes to its end
};

}  // namespace veltrin
