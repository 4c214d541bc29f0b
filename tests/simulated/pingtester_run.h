// SPDX-License-Identifier: GPL-3.0-or-later
// A Ping Test on the simulated platform, whose pings answer as a test tells.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "ping/pingtester.h"
#include "support/simulation.h"

namespace veltrin {

inline constexpr std::int64_t kEcho = 20;    // ms from a scripted ping's start to its text
inline constexpr std::int64_t kTick = 1000;  // ms of the timer and of the pause behind an echo

class PingTesterRun : public ::testing::Test {
 protected:
  PingTesterRun() {
    simulation.processes.tool = [this](const std::string& command) {
      return std::vector<ToolWrite>{{kEcho, reply(command)}};
    };
  }

  // The text of the ping that is being run; a test replaces what it tells.
  std::string reply(const std::string& command) {
    const auto count = static_cast<int>(simulation.processes.starts.size());
    return replies ? replies(command, count) : pingReply(20);
  }

  pingtester& open() {
    window = simulation.program().show<pingtester>();
    return *window;
  }

  // Opens the window with so many destinations filled and the others empty.
  pingtester& openWith(std::size_t destinations, const std::string& passes) {
    pingtester& opened = open();
    for (std::size_t row = destinations; row < pingtester::kRows; ++row) {
      simulation.desktop.type(opened.url[row], "");
    }
    simulation.desktop.type(opened.Combo1, passes);
    return opened;
  }

  void clickAt(std::int64_t moment, CommandButton& button) {
    simulation.loop.at(moment, [this, &button] { simulation.desktop.click(button); });
  }

  // Clicks Start now and lets everything happen until the run is complete. The word of an
  // earlier run still stands at its start; the button tells that this one has ended.
  void runToEnd(pingtester& opened) {
    simulation.desktop.click(opened.Command1);
    ASSERT_EQ(opened.Command1.caption.get(), "Stop");
    constexpr std::int64_t kLongest = 600'000;
    const std::int64_t end = simulation.loop.milliseconds() + kLongest;
    while (opened.Command1.caption.get() != "Start" && simulation.loop.milliseconds() < end) {
      simulation.run(kTick);
    }
    ASSERT_EQ(opened.Label9.caption.get(), "Complete");
  }

  void TearDown() override {
    EXPECT_EQ(simulation.loop.gate().escapedFailures(), 0);
    EXPECT_EQ(simulation.processes.openHandles(), 0U);
  }

  Simulation simulation;
  std::function<std::string(const std::string& command, int count)> replies;
  std::shared_ptr<pingtester> window;
};

}  // namespace veltrin
