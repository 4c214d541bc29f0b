// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <string>

#include "platform/linux/linux_clock.h"

namespace veltrin {
namespace {

// The present moment by the same clock: time() is up to a tick behind it.
std::string plainTime() {
  using std::chrono::system_clock;
  const std::time_t seconds = system_clock::to_time_t(system_clock::now());
  std::tm parts{};
  localtime_r(&seconds, &parts);
  char text[64];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts)};
}

TEST(WithoutSeconds, CutsThemOffThePatternOf24Hours) {
  EXPECT_EQ(withoutSeconds("%H:%M:%S", ""), "%H:%M");
  EXPECT_EQ(withoutSeconds("%T", ""), "%H:%M");
  EXPECT_EQ(withoutSeconds("%H.%M.%S", ""), "%H.%M");
}

TEST(WithoutSeconds, CutsThemOffThePatternOf12HoursAndTheHoursLeadingZero) {
  EXPECT_EQ(withoutSeconds("%r", "%I:%M:%S %p"), "%-I:%M %p");
  EXPECT_EQ(withoutSeconds("%p %I:%M:%S", ""), "%p %-I:%M");
}

TEST(WithoutSeconds, LeavesATimeZoneOut) { EXPECT_EQ(withoutSeconds("%H:%M:%S %Z", ""), "%H:%M"); }

TEST(WithoutSeconds, KeepsOtherWords) { EXPECT_EQ(withoutSeconds("%-H h %M", ""), "%-H h %M"); }

TEST(WithoutSeconds, TakesThePlainPatternWhenNoTimeOfDayRemains) {
  EXPECT_EQ(withoutSeconds("", ""), "%H:%M");
  EXPECT_EQ(withoutSeconds("%r", ""), "%H:%M");
  EXPECT_EQ(withoutSeconds("%X", ""), "%H:%M");
}

TEST(LinuxClock, TellsThePresentMoment) {
  const std::string before = plainTime();
  const DateTime now = LinuxClock().now();
  const std::string after = plainTime();
  char text[96];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", now.year, now.month, now.day,
                now.hour, now.minute, now.second);
  EXPECT_LE(before, text);
  EXPECT_LE(text, after);
}

TEST(LinuxClock, GoesOnByTheMillisecondsThatPass) {
  using std::chrono::steady_clock;
  const LinuxClock clock;
  const auto secondsSince = [](steady_clock::time_point start) {
    return std::chrono::duration<double>(steady_clock::now() - start).count();
  };
  const auto before = steady_clock::now();
  const double first = secondsSinceMidnight(clock.now());
  const auto behindFirst = steady_clock::now();
  while (secondsSince(behindFirst) < 0.025) {
  }
  const double least = secondsSince(behindFirst);
  const double last = secondsSinceMidnight(clock.now());
  const double most = secondsSince(before);
  const double passed = std::fmod(last - first + 86400, 86400);  // midnight may lie between
  EXPECT_GT(passed, least - 0.002);
  EXPECT_LT(passed, most + 0.002);
}

TEST(LinuxClock, TellsMillisecondsOfEverySize) {
  const LinuxClock clock;
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(3);
  bool early = false;
  bool late = false;
  while (!(early && late) && std::chrono::steady_clock::now() < end) {
    const int millisecond = clock.now().millisecond;
    ASSERT_GE(millisecond, 0);
    ASSERT_LE(millisecond, 999);
    early = early || (millisecond > 0 && millisecond < 500);
    late = late || millisecond >= 500;
  }
  EXPECT_TRUE(early);
  EXPECT_TRUE(late);
}

TEST(LinuxClock, TellsHoursAndMinutesInAPlainEnvironment) {
  setenv("LC_ALL", "C.UTF-8", 1);
  const LinuxClock clock;
  unsetenv("LC_ALL");
  const std::string before = plainTime().substr(11, 5);
  const std::string shown = clock.shortTime();
  const std::string after = plainTime().substr(11, 5);
  EXPECT_TRUE(shown == before || shown == after) << shown;
}

}  // namespace
}  // namespace veltrin
