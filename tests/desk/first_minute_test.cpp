// SPDX-License-Identifier: GPL-3.0-or-later
// The first minute of a new user: from an empty home to the first result of a tool, with the
// keyboard alone. Needs the scenario "clean-15" around it, in which each destination that the
// tool proposes is a host 70 ms away.
#include <chrono>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <string>

#include "desk/keyboard_run.h"

namespace veltrin::desk {
namespace {

using Clock = std::chrono::steady_clock;

const std::string kWindow = "Ping Test";
constexpr int kRows = 5;

// The waits that the program tells, in ms: for the splash, for an answer on its port and
// before the menu; then the time to the first pass, and behind each of its echoes.
constexpr milliseconds kTold{100 + 2500 + 1000 + 1000 + kRows * 1000};
constexpr int kLoaded = 10;  // times as long on a machine that does much else

class FirstMinuteOnADesk : public KeyboardRun {
 protected:
  // A user whose home holds nothing, and whose desktop names no other folders.
  void SetUp() override {
    ASSERT_NO_FATAL_FAILURE(KeyboardRun::SetUp());
    home_ = data_ / "home";
    std::filesystem::create_directory(home_);
    setenv("HOME", home_.c_str(), 1);
    for (const char* name :
         {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"}) {
      unsetenv(name);
    }
    outputOf({"xdotool", "mousemove", "--sync", "1270", "890"});
  }

  void TearDown() override {
    setenv("HOME", oldHome_.c_str(), 1);
    KeyboardRun::TearDown();
  }

  // Where the mouse is; not what it is above.
  static std::string mouse() {
    const std::string told = outputOf({"xdotool", "getmouselocation"});
    return told.substr(0, told.find(" screen"));
  }

  static void tell(const char* step, Clock::time_point from) {
    const auto took = std::chrono::duration_cast<milliseconds>(Clock::now() - from);
    std::printf("%-32s %6lld ms\n", step, static_cast<long long>(took.count()));
  }

  // Waits for the end of a step that has just begun, and tells how long it took.
  static void await(const char* step, const std::function<bool()>& isDone) {
    const auto from = Clock::now();
    ASSERT_TRUE(eventually(kTold * kLoaded, isDone)) << step;
    tell(step, from);
  }

  std::string current(int row) {
    return desk_->valueOf(kWindow, "Current time of destination " + std::to_string(row));
  }

  void expectReply(int row) {
    const int time = std::stoi(current(row));
    EXPECT_GE(time, 70) << row;
    EXPECT_LT(time, 10000) << row;
    EXPECT_EQ(desk_->valueOf(kWindow, "Lost echoes of destination " + std::to_string(row)), "0");
  }

  void openPingTest() {
    ASSERT_NO_FATAL_FAILURE(await("start to splash", [this] { return hasSplash(); }));
    ASSERT_NO_FATAL_FAILURE(await("splash to menu", [this] { return isShown(kMenu, kWindow); }));
    EXPECT_FALSE(hasSplash());
    ASSERT_NO_FATAL_FAILURE(pressByKeys(kMenu, kWindow));
    await("menu to tool", [this] { return desk_->hasWindow(kWindow); });
  }

  void runFirstPass() {
    ASSERT_NO_FATAL_FAILURE(goTo(kWindow, "Start"));
    EXPECT_EQ(current(1), "");
    desk_->press("space");
    ASSERT_NO_FATAL_FAILURE(await("Start to first result", [this] { return !current(1).empty(); }));
    tell("the whole until then", begin_);
    EXPECT_TRUE(isShown(kWindow, "Stop"));
    await("first result to end of pass", [this] { return !current(kRows).empty(); });
  }

  // Keys that are pressed while the program waits are held back, so the run is stopped first.
  void endByKeys() {
    desk_->press("space");
    ASSERT_TRUE(eventually(kTold * kLoaded, [this] { return isShown(kWindow, "Start"); }));
    ASSERT_NO_FATAL_FAILURE(pressByKeys(kWindow, "Quit"));
    ASSERT_TRUE(eventually(kTold * kLoaded, [this] { return !desk_->hasWindow(kWindow); }));
    ASSERT_NO_FATAL_FAILURE(pressByKeys(kMenu, "Exit"));
    EXPECT_EQ(program_->waitFor(kTold * kLoaded), 0);
  }

  const std::string oldHome_ = std::getenv("HOME") == nullptr ? "" : std::getenv("HOME");
  std::filesystem::path home_;
  Clock::time_point begin_;
};

TEST_F(FirstMinuteOnADesk, ANewUserReachesAResultOfThePingTestByTheKeyboardAlone) {
  const std::string mouseBefore = mouse();
  ASSERT_TRUE(std::filesystem::is_empty(home_));
  begin_ = Clock::now();
  start();
  ASSERT_NO_FATAL_FAILURE(openPingTest());
  ASSERT_NO_FATAL_FAILURE(runFirstPass());
  EXPECT_LT(Clock::now() - begin_, kTold * kLoaded);
  tell("the whole", begin_);
  desk_->photograph("first-minute");

  for (int row = 1; row <= kRows; ++row) expectReply(row);
  ASSERT_NO_FATAL_FAILURE(endByKeys());
  EXPECT_EQ(mouse(), mouseBefore);
  const std::string kept = contentOf(home_ / ".local/share/veltrin/Files/Veltrin.dat");
  EXPECT_NE(kept.find("\r\nVersion=1.03\r\n"), std::string::npos) << kept;
}

}  // namespace
}  // namespace veltrin::desk
