// SPDX-License-Identifier: GPL-3.0-or-later
// A person opens the network monitors from the menu, in the lab, while echoes pass: reads
// their figures, and moves and closes them by the keyboard. Each takes about 20 s.
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <thread>

#include "desk/program_run.h"

namespace veltrin::desk {
namespace {

constexpr milliseconds kSoon{20000};
constexpr int kFewest = 30;  // echoes a second, on a machine that does much else
constexpr int kMost = 110;

const char* const kBandwidth = "NETWORK BANDWIDTH";
const char* const kProtocols = "Indepth Internet Monitor";
const char* const kGrip = "Grip that moves the window";

class MonitorOnADesk : public ProgramRun {
 protected:
  void TearDown() override {
    echoes_.reset();
    ProgramRun::TearDown();
  }

  void open(const std::string& button, const std::string& window) {
    desk_->bringToFront(kMenu);
    desk_->click(desk_->button(kMenu, button));
    ASSERT_TRUE(eventually(kSoon, [&] { return desk_->hasWindow(window); }));
  }

  // Up to a hundred echoes a second, each of 1428 bytes on its way out and back.
  void letEchoesPass() {
    echoes_.emplace(std::vector<std::string>{"ping", "-4", "-q", "-n", "-i", "0.01", "-s", "1400",
                                             "target.example"});
  }

  // What a dial of 1,000 KB per second shows; nothing when it is not to be seen.
  static std::optional<int> shownBy(const std::string& row) {
    return figure(kBandwidth, "Scale to 1,000 KB per second, " + row + " ([0-9]+)");
  }

  static std::optional<int> figure(const std::string& window, const std::string& pattern) {
    const std::regex told(pattern);
    for (const Element& element : elementsOf("veltrin")) {
      std::smatch value;
      if (element.showing && element.window == window &&
          std::regex_match(element.name, value, told)) {
        return std::stoi(value[1]);
      }
    }
    return std::nullopt;
  }

  // What the lab's device has received and sent so far, in bytes.
  static std::array<double, 2> carried() {
    const std::string all = contentOf("/proc/net/dev");
    std::istringstream line(all.substr(all.find("lab0:") + 5));
    std::array<double, 9> columns{};
    for (double& column : columns) line >> column;
    return {columns[0], columns[8]};
  }

  // Whether the dials show what the device carries in two seconds, within a quarter, and
  // that it is more than a few echoes.
  static bool isTrafficShown() {
    const auto before = carried();
    std::this_thread::sleep_for(milliseconds(2000));
    const auto after = carried();
    const double received = (after[0] - before[0]) / 2000;  // KB/s
    const double sent = (after[1] - before[1]) / 2000;
    const auto isNear = [](const char* row, double speed) {
      return speed > 20 && std::abs(shownBy(row).value_or(0) - speed) <= speed / 4;
    };
    return isNear("received", received) && isNear("sent", sent) && isNear("total", received + sent);
  }

  // By the menu that it has for every window. Keys that come before it is there are lost.
  void moveByTheWindowManager() const {
    desk_->bringToFront(kProtocols);
    for (const char* key :
         {"Escape", "alt+space", "m", "Right", "Right", "Down", "Down", "Return"}) {
      desk_->press(key);
      std::this_thread::sleep_for(milliseconds(200));
    }
  }

  void exitFromMenu() {
    desk_->bringToFront(kMenu);
    desk_->click(desk_->button(kMenu, "Exit"));
    EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
  }

  std::optional<Child> echoes_;
};

TEST_F(MonitorOnADesk, TheBandwidthMonitorShowsTrafficAndIsMovedAndClosedByTheKeyboard) {
  start();
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  ASSERT_NO_FATAL_FAILURE(open("Monitor Bandwidth", kBandwidth));
  EXPECT_TRUE(eventually(kSoon, [] { return shownBy("total") == 0; }));

  letEchoesPass();
  EXPECT_TRUE(eventually(kSoon, isTrafficShown))
      << shownBy("received").value_or(-1) << ", " << shownBy("sent").value_or(-1) << ", "
      << shownBy("total").value_or(-1);
  desk_->photograph("monitor-bandwidth");
  echoes_.reset();
  EXPECT_TRUE(eventually(kSoon, [] { return shownBy("total") == 0; }));

  desk_->bringToFront(kBandwidth);
  const Element before = desk_->named(kBandwidth, kGrip);
  for (const char* key : {"Right", "Right", "Right", "Down"}) desk_->press(key);
  EXPECT_TRUE(eventually(kSoon, [&] {
    const Element now = desk_->named(kBandwidth, kGrip);
    return now.left == before.left + 30 && now.top == before.top + 10;
  }));
  const auto windows = desk_->windowsOnScreen();
  desk_->press("Escape");
  ASSERT_TRUE(eventually(kSoon, [&] { return desk_->windowsOnScreen() > windows; }));
  desk_->photograph("monitor-bandwidth-menu");
  desk_->press("Down");
  desk_->press("Return");
  EXPECT_TRUE(eventually(kSoon, [&] { return !desk_->hasWindow(kBandwidth); }));
  exitFromMenu();
}

TEST_F(MonitorOnADesk, TheProtocolMonitorShowsDatagramsAndIsMovedAndClosedByTheKeyboard) {
  start();
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  ASSERT_NO_FATAL_FAILURE(open("InDepth Net Monitor", kProtocols));
  letEchoesPass();
  for (const char* row : {"Version 4, datagrams sent", "Version 4, datagrams received",
                          "Version 4, datagrams received and delivered"}) {
    const std::string pattern = std::string(row) + " ([0-9]+) sec";
    EXPECT_TRUE(eventually(kSoon,
                           [&] {
                             const int shown = figure(kProtocols, pattern).value_or(0);
                             return shown >= kFewest && shown <= kMost;
                           }))
        << row << ' ' << figure(kProtocols, pattern).value_or(-1);
  }
  EXPECT_LT(figure(kProtocols, "Version 6, datagrams sent ([0-9]+) sec").value_or(kMost), 10);
  desk_->photograph("monitor-protocols");

  const char* const anyRow = "Version 4, datagrams sent";
  const Element before = desk_->named(kProtocols, anyRow);
  EXPECT_TRUE(eventually(kSoon, [&] {
    moveByTheWindowManager();
    const Element now = desk_->named(kProtocols, anyRow);
    return now.left > before.left && now.top > before.top;
  }));
  desk_->press("alt+F4");
  EXPECT_TRUE(eventually(kSoon, [&] { return !desk_->hasWindow(kProtocols); }));
  exitFromMenu();
}

}  // namespace
}  // namespace veltrin::desk
