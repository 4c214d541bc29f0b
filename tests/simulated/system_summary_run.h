// SPDX-License-Identifier: GPL-3.0-or-later
// The collectors of the machine's summary on the simulated platform, whose tool prints
// what a test tells.
#pragma once

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "forms/command_button.h"
#include "support/simulation.h"
#include "support/systeminfo_text.h"
#include "sysinfo/DosApp.h"
#include "sysinfo/DosFrm.h"

namespace veltrin {

// A window that the user has before him while a collector works.
class BystanderWindow : public Form {
 public:
  explicit BystanderWindow(Program& program) : Form("BystanderWindow", program) {
    own("Command1", Command1);
  }
  CommandButton Command1;
};

class SystemSummaryRun : public ::testing::Test {
 protected:
  SystemSummaryRun() {
    simulation.processes.tool =
        [this](const std::string&) -> std::optional<std::vector<ToolWrite>> {
      if (onStart) onStart();
      return writes;
    };
    bystander = program.show<BystanderWindow>();
  }

  // What the tool prints from now on, in one write.
  void prints(const std::string& text) { writes = std::vector<ToolWrite>{{kToolTime, text}}; }

  // The same in writes of so many bytes, each read by itself.
  void printsInPieces(const std::string& text, std::size_t length) {
    std::vector<ToolWrite> pieces;
    for (std::size_t at = 0; at < text.size(); at += length) {
      pieces.push_back({kToolTime, text.substr(at, length)});
    }
    writes = pieces;
  }

  // A text of so many lines, the first of which tells of the board.
  static std::string linesOfBoard(std::size_t count) {
    Lines lines(count, "filled");
    lines[0] = "System Model:              Board 7";
    return printed(lines);
  }

  Lines commandLines() const {
    Lines lines;
    for (const auto& start : simulation.processes.starts) lines.push_back(start.commandLine);
    return lines;
  }

  static Lines itemsOf(const ListBox& list) {
    Lines items;
    for (std::size_t index = 0; index < list.count(); ++index) items.push_back(list.item(index));
    return items;
  }

  // Does something at every yield of a collector.
  void atEachYield(const std::function<void()>& action) {
    simulation.loop.gate().onOpen(action, nullptr);
  }

  // Lets the user click while the tool runs; the click waits for the first yield.
  void clickDuringTheTool(const std::function<void()>& click) {
    bystander->Command1.click = click;
    simulation.loop.after(kToolTime / 2, [this] { simulation.desktop.click(bystander->Command1); });
  }

  void TearDown() override { EXPECT_EQ(simulation.loop.gate().escapedFailures(), 0); }

  static constexpr std::int64_t kToolTime = 20;  // ms before each write

  Simulation simulation;
  Program& program = simulation.program();
  SystemSummary& summary = program.summary;
  std::optional<std::vector<ToolWrite>> writes = std::vector<ToolWrite>{};
  std::function<void()> onStart;
  std::shared_ptr<BystanderWindow> bystander;
};

}  // namespace veltrin
