// SPDX-License-Identifier: GPL-3.0-or-later
// A random user on the simulated platform: clicks, types, closes windows, while
// tools fall silent or break off, texts arrive in odd pieces, downloads come or fail, and so
// does the disk.
#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "ping/pingtester.h"
#include "support/simulation.h"

namespace veltrin {

// What a run of the monkey came to. Two runs of one seed come to the same.
struct MonkeyResult {
  std::uint64_t events = 0;        // things the user did
  std::uint64_t programs = 0;      // programs that were started
  std::uint64_t tools = 0;         // console tools that were started
  std::uint64_t echoes = 0;        // that were sent without a tool
  std::uint64_t downloads = 0;     // that came to an end
  std::uint64_t messages = 0;      // messages that were shown
  std::uint64_t saves = 0;         // result files that were written
  std::uint64_t pages = 0;         // that were printed
  std::uint64_t refusedPages = 0;  // by their printers, or for want of one
  std::uint64_t digest = 0;        // of everything that could be seen
  std::uint64_t failures = 0;      // statements that failed outside every rule
  std::uint64_t openHandles = 0;   // left open by runs that ended well
};

class Monkey {
 public:
  explicit Monkey(std::uint32_t seed) : random_(seed) {}

  // Does so many things, in as many programs as it takes.
  MonkeyResult run(std::uint64_t events);

 private:
  void startProgram();
  void provideTraffic();
  void changePrinters();
  void runProgram();
  void scheduleNext();
  void act();
  void openWindow();
  void openInDepth();
  void serve();
  void actOnWindow(Form& form);
  void useMouse(Form& form);
  void resize(Form& form);
  void actOnControl(Control& control);
  void actOnText(TextBox& box);
  void actOnButton(CommandButton& button);
  void changeFaults();
  void lookAt(const Form& form);
  void remember(const std::string& seen);
  std::vector<ToolWrite> writes(const std::string& text);
  std::string toolText();
  std::string pingText();
  std::string traceText();
  std::string textFor(const ComboBox& box);
  std::string typedText();

  std::uint32_t below(std::uint32_t limit) { return random_() % limit; }
  bool oneIn(std::uint32_t many) { return below(many) == 0; }

  std::mt19937 random_;
  std::uint64_t wanted_ = 0;
  MonkeyResult result_;
  std::unique_ptr<Simulation> simulation_;
  std::size_t failedStarts_ = 0;
};

}  // namespace veltrin
