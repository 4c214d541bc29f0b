// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of the route tools on the simulated platform. Their tools print the
// command line that they were started with, unless a test scripts another text.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "frame/setlang.h"
#include "support/simulation.h"

namespace veltrin {

inline constexpr std::int64_t kToolTime = 20;  // ms from a tool's start to its text

inline const std::string kProgramFolder = "C:\\Program Files\\Veltrin";

class RouteRun : public ::testing::Test {
 protected:
  RouteRun() {
    simulation.processes.tool = [this](const std::string& command) {
      if (script) return script(command);
      return std::vector<ToolWrite>{{kToolTime, "<" + command + ">\r\n"}};
    };
  }

  // The program speaks Dutch from now on.
  void speakDutch() {
    Program& program = simulation.program();
    program.LanguageId = kDutch;
    chooseLanguage(program.LanguageId, program.texts);
  }

  // Another window, so that the program goes on when the one under test is closed.
  void keepTheProgramRunning() { simulation.program().show<setlang>(); }

  // Something the user does at a moment of the clock.
  void at(std::int64_t moment, std::function<void()> action) {
    simulation.loop.at(moment, std::move(action));
  }

  std::vector<std::string> commands() const {
    std::vector<std::string> lines;
    for (const auto& start : simulation.processes.starts) lines.push_back(start.commandLine);
    return lines;
  }

  std::vector<std::int64_t> moments() const {
    std::vector<std::int64_t> started;
    for (const auto& start : simulation.processes.starts) started.push_back(start.moment);
    return started;
  }

  void expectOneMessage(const std::string& title, int style, const std::string& text) {
    ASSERT_EQ(simulation.desktop.messages.size(), 1U);
    EXPECT_EQ(simulation.desktop.messages[0].title, title);
    EXPECT_EQ(simulation.desktop.messages[0].style, style);
    EXPECT_EQ(simulation.desktop.messages[0].text, text);
  }

  void TearDown() override {
    EXPECT_EQ(simulation.loop.gate().escapedFailures(), 0);
    EXPECT_EQ(simulation.processes.openHandles(), 2 * failedStarts);
    EXPECT_EQ(simulation.icmp.openHandles, 0);
    EXPECT_EQ(simulation.icmp.layers, 0);
  }

  Simulation simulation;
  std::size_t failedStarts = 0;  // each leaves both ends of its pipe open

  // What a command line prints; without one every tool prints its command line.
  std::function<std::vector<ToolWrite>(const std::string& command)> script;
};

}  // namespace veltrin
