// SPDX-License-Identifier: GPL-3.0-or-later
// A person optimizes the MTU, in the lab, from the menu's button to the last message: fifty
// pings of a second each and seven sizes of five seconds each. It takes about 100 s.
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

#include "desk/tool_run.h"

namespace veltrin::desk {
namespace {

constexpr int kPings = 50;
constexpr milliseconds kSoon{20000};

const char* const kEntry = "MTU Test/Set";
const char* const kPingWindow = "Verifying Ping/Packet Loss";
const char* const kWaiting = "Veltrin (MTU Test) ";
const char* const kCoarse = "SpeedTest (MTU) Course Test";

const std::vector<std::string> kSizes = {"576", "1400", "1420", "1440", "1460", "1480", "1500"};

class MtuOnADesk : public ToolRun {
 protected:
  // The time that a ping printed.
  static int timeIn(const std::string& text) {
    std::smatch found;
    if (!std::regex_search(text, found, std::regex("Average = ([0-9]+)ms"))) return -1;
    return std::stoi(found[1]);
  }

  std::string registry() { return contentOf(data_ / "veltrin" / "Files" / "Registry.dat"); }

  void expectLine(const std::string& window, const std::string& line) {
    EXPECT_TRUE(isShown(window, line)) << line;
  }

  // The lines of the window agree with what the tools printed.
  void expectLinesOfPings() {
    int least = 1000;
    int most = 0;
    for (int run = 0; run < kPings; ++run) {
      EXPECT_EQ(commandOf(run), "ping ipv4.google.com -n 1");
      const int time = timeIn(textOf(run));
      ASSERT_GE(time, 0) << textOf(run);
      least = std::min(least, time);
      most = std::max(most, time);
    }
    expectLine(kPingWindow, "Min Ping Result = " + std::to_string(least) + " ms");
    expectLine(kPingWindow, "Max Ping Result = " + std::to_string(most) + " ms");
    expectLine(kPingWindow, "Lost Packets = 0");
    expectLine(kPingWindow, "Pings remaining 0");
    expectLine(kPingWindow,
               "Last round trip in milliseconds " + std::to_string(timeIn(textOf(kPings - 1))));
  }
};

TEST_F(MtuOnADesk, TheOptimizerSetsTheLargestMtuAndIsNotNeededAgain) {
  start();
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  forgetRuns();  // of the first start
  desk_->click(desk_->button(kMenu, "Set MTU"));
  EXPECT_EQ(desk_->named(kEntry, "Site for the test").text, "ipv4.google.com");
  desk_->photograph("mtu-entry");
  desk_->bringToFront(kEntry);
  desk_->press("Return");

  ASSERT_TRUE(eventually(kSoon, [&] { return desk_->hasWindow(kPingWindow); }));
  ASSERT_TRUE(eventually(
      kSoon, [&] { return std::stoi(desk_->valueOf(kPingWindow, "Pings remaining")) <= 40; }));
  EXPECT_FALSE(desk_->hasWindow(kEntry));
  desk_->photograph("mtu-pings");
  ASSERT_TRUE(eventually(kLongRun,
                         [&] { return isShown(kPingWindow, "Ping Test Results are Excellent"); }));
  desk_->photograph("mtu-rated");
  // For five seconds.
  ASSERT_TRUE(
      eventually(kSoon, [&] { return isShown(kWaiting, "Testing will start in 5 Seconds"); }));
  desk_->photograph("mtu-waiting");
  desk_->bringToFront(kWaiting);
  desk_->press("alt+F4");
  ASSERT_TRUE(eventually(kSoon, [&] { return isShown(kCoarse, "MTU of 1400 test Good"); }));
  desk_->photograph("mtu-search");
  desk_->bringToFront(kCoarse);
  desk_->press("alt+F4");
  ASSERT_TRUE(eventually(kLongRun, [&] { return isShown(kCoarse, "MTU of 1420 test Good"); }));
  ASSERT_NO_FATAL_FAILURE(expectLinesOfPings());

  ASSERT_TRUE(eventually(kLongRun, [&] { return isShown("Veltrin", "OK"); }));
  EXPECT_TRUE(isShown(kCoarse, "MTU of 1500 test Good"));
  desk_->photograph("mtu-complete");
  EXPECT_EQ(readMessage("Veltrin"), "MTU Test complete, MTU Value set to 1500  Original MTU was ");
  ASSERT_TRUE(eventually(
      kSoon, [&] { return !desk_->hasWindow(kCoarse) && !desk_->hasWindow(kPingWindow); }));
  for (std::size_t probe = 0; probe < kSizes.size(); ++probe) {
    EXPECT_EQ(commandOf(kPings + static_cast<int>(probe)), "ping -f -n 2 -l " + kSizes[probe]);
    EXPECT_EQ(textOf(kPings + static_cast<int>(probe)), "IP address must be specified.\r\n");
  }
  EXPECT_EQ(commandOf(kPings + static_cast<int>(kSizes.size())), "");
  EXPECT_TRUE(
      std::regex_search(settings(), std::regex("\\[Settings\\]\r\n([^\\[]*\r\n)?MTU=1\r\n")))
      << settings();
  EXPECT_NE(settings().find("\r\nMTU Site=ipv4.google.com\r\n"), std::string::npos);
  EXPECT_NE(registry().find("[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\Tcpip\\"
                            "Parameters\\Interfaces]\r\nMTU=sz:1500\r\n"),
            std::string::npos)
      << registry();

  desk_->click(desk_->button(kMenu, "Set MTU"));
  EXPECT_EQ(readMessage("Veltrin"),
            "The MTU value is set to maximum, 1500, the MTU test is not necessary.");
  ASSERT_TRUE(eventually(kSoon, [&] { return !desk_->hasWindow(kEntry); }));
  desk_->click(desk_->button(kMenu, "Exit"));
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
}

}  // namespace
}  // namespace veltrin::desk
