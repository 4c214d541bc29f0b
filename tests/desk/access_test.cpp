// SPDX-License-Identifier: GPL-3.0-or-later
// A person without a mouse, to whom a screen reader tells where the keyboard is, opens each
// window that the menu opens, goes through it and closes it.
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "desk/keyboard_run.h"

namespace veltrin::desk {
namespace {

constexpr milliseconds kSoon{20000};

// What a control that takes the keyboard may be.
const std::set<std::string> kRoles = {"push button", "text",         "combo box", "check box",
                                      "list",        "radio button", "list item"};

// A window, the button that opens it, how many controls of it the keyboard reaches there at
// least (a list does not take it before it has rows), the keys that close it, and the button
// that is disabled until the window has done its work, where that begins by itself.
struct Tool {
  const char* button;
  const char* window;
  std::size_t stops;
  const char* closing = "alt+F4";
  const char* awaited = nullptr;
};

constexpr std::array<Tool, 9> kTools{{
    {"Ping Test", "Ping Test", 11},
    {"Trace Route", "Trace Route Test", 12},
    {"Hop Stability Test", "Stability Test", 5},
    {"InDepth Test", "InDepth Internet Analysis", 15},
    {"Set MTU", "MTU Test/Set", 2},
    {"Monitor Bandwidth", "NETWORK BANDWIDTH", 2},
    {"InDepth Net Monitor", "Indepth Internet Monitor", 0},
    {"Download test", "Stability Analyzer ", 1, "alt+F4", "Done"},
    {"Monitor Outage", "Monitor for Outage", 5},
}};

class KeyboardOnADesk : public KeyboardRun {
 protected:
  // The controls that the key Tab reaches, from the first to the one before it comes again.
  std::vector<Element> walk(const std::string& window) {
    std::vector<Element> stops;
    auto now = focusAfter(window, std::nullopt);
    if (!now) {
      desk_->press("Tab");
      now = focusAfter(window, std::nullopt);
    }
    while (now && stops.size() < kMostStops) {
      stops.push_back(*now);
      desk_->press("Tab");
      now = focusAfter(window, now);
      if (now && idOf(*now) == idOf(stops.front())) break;
    }
    return stops;
  }

  static void expectToldWell(const std::string& window, const std::vector<Element>& stops) {
    std::set<std::string> names;
    for (const Element& stop : stops) {
      EXPECT_FALSE(stop.name.empty()) << window << ": " << idOf(stop);
      EXPECT_TRUE(kRoles.contains(stop.role)) << window << ": " << idOf(stop);
      EXPECT_TRUE(stop.showing && stop.enabled) << window << ": " << idOf(stop);
      EXPECT_TRUE(names.insert(stop.name).second) << window << ": " << idOf(stop);
    }
  }

  void open(const std::string& from, const Tool& tool) {
    ASSERT_NO_FATAL_FAILURE(pressByKeys(from, tool.button));
    ASSERT_TRUE(eventually(kSoon, [&] { return desk_->hasWindow(tool.window); })) << tool.window;
  }

  static void awaitEnabled(const std::string& window, const std::string& button) {
    const bool enabled = eventually(kSoon, [&] {
      const auto elements = elementsOf("veltrin");
      return std::any_of(elements.begin(), elements.end(), [&](const Element& element) {
        return element.window == window && element.name == button && element.enabled;
      });
    });
    EXPECT_TRUE(enabled) << window << ": " << button;
  }

  void close(const Tool& tool) {
    desk_->press(tool.closing);
    EXPECT_TRUE(eventually(kSoon, [&] { return !desk_->hasWindow(tool.window); })) << tool.window;
  }

  void visit(const Tool& tool) {
    SCOPED_TRACE(tool.window);
    ASSERT_NO_FATAL_FAILURE(open(kMenu, tool));
    if (tool.awaited != nullptr) awaitEnabled(tool.window, tool.awaited);
    const auto stops = walk(tool.window);
    EXPECT_GE(stops.size(), tool.stops);
    expectToldWell(tool.window, stops);
    close(tool);
    EXPECT_TRUE(eventually(kSoon, [&] { return focusIn(kMenu).has_value(); }));
  }
};

TEST_F(KeyboardOnADesk, EachWindowOfTheMenuIsOpenedWalkedAndClosedWithoutAMouse) {
  start();
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  const auto menu = walk(kMenu);
  EXPECT_EQ(menu.size(), 14U);
  expectToldWell(kMenu, menu);
  for (const Tool& tool : kTools) ASSERT_NO_FATAL_FAILURE(visit(tool));
  ASSERT_NO_FATAL_FAILURE(pressByKeys(kMenu, "Exit"));
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
}

TEST_F(KeyboardOnADesk, TheReportIsOpenedFromAboutWalkedAndClosedWithoutAMouse) {
  const Tool about{"About", "About", 1, "Escape"};
  const Tool report{"System Info", "Detailed System Information", 18};
  start();
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  ASSERT_NO_FATAL_FAILURE(open(kMenu, about));
  expectToldWell(about.window, walk(about.window));
  ASSERT_NO_FATAL_FAILURE(open(about.window, report));
  const auto stops = walk(report.window);
  EXPECT_EQ(stops.size(), report.stops);
  expectToldWell(report.window, stops);
  close(report);
  EXPECT_TRUE(eventually(kSoon, [&] { return focusIn(about.window).has_value(); }));
  close(about);
}

// The setting by which a desktop tells its programs to write larger.
TEST_F(KeyboardOnADesk, LargerTextsOfTheDesktopEnlargeAllOfAWindow) {
  outputOf({"xprop", "-root", "-f", "RESOURCE_MANAGER", "8s", "-set", "RESOURCE_MANAGER",
            "Xft.dpi:\t192\n"});
  start();
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  desk_->photograph("start-menu-large-texts");

  constexpr int kUsualWidth = 466;  // pixels: two columns of tools and what is around them
  const std::string told = outputOf({"xdotool", "search", "--onlyvisible", "--name", "^Veltrin$",
                                     "getwindowgeometry", "--shell"});
  std::smatch width;
  ASSERT_TRUE(std::regex_search(told, width, std::regex("WIDTH=([0-9]+)"))) << told;
  EXPECT_EQ(std::stoi(width[1]), 2 * kUsualWidth);
}

}  // namespace
}  // namespace veltrin::desk
