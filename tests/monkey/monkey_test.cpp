// SPDX-License-Identifier: GPL-3.0-or-later
// Environment: VELTRIN_MONKEY_EVENTS (100000) and VELTRIN_MONKEY_SEED (1) for
// longer runs and to see a failure again.
#include "monkey/monkey.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>

namespace veltrin {
namespace {

std::uint64_t setting(const char* name, std::uint64_t otherwise) {
  const char* value = std::getenv(name);
  return value == nullptr ? otherwise : std::strtoull(value, nullptr, 10);
}

// Windows that are open at one moment at least, of 100,000 events: most of the 21, of which
// one makes way for the menu and two for their followers.
constexpr std::uint64_t kOpenTogether = 14;

// Events between two starts of a tool, at most. Longer ones mean that nobody can bring the
// program on.
constexpr std::uint64_t kLongestIdle = 4000;

std::uint32_t seed() { return static_cast<std::uint32_t>(setting("VELTRIN_MONKEY_SEED", 1)); }

TEST(Monkey, DoesWhatItLikesAndBreaksNothing) {
  const std::uint64_t events = setting("VELTRIN_MONKEY_EVENTS", 100000);
  const MonkeyResult result = Monkey(seed()).run(events);
  std::cout << "seed " << seed() << ": " << result.events << " events, " << result.programs
            << " programs, " << result.tools << " tools, at most " << result.longestIdle
            << " events without one, " << result.echoes << " echoes, " << result.downloads
            << " downloads, " << result.messages << " messages, " << result.saves << " files, "
            << result.pages << " pages, " << result.refusedPages << " refused; at once "
            << result.openTogether << " windows open, " << result.shownTogether << " shown\n";
  for (std::size_t name = 0; name < kWindowNames.size(); ++name) {
    std::cout << (name == 0 ? "opened: " : ", ") << kWindowNames[name].second << " "
              << result.openings[name];
    EXPECT_GT(result.openings[name], 0U) << kWindowNames[name].second;
  }
  std::cout << "\n";
  EXPECT_GE(result.openTogether, kOpenTogether);
  EXPECT_EQ(result.events, events);
  EXPECT_EQ(result.failures, 0U);
  EXPECT_EQ(result.openHandles, 0U);
  EXPECT_GT(result.tools, events / 100);
  EXPECT_LT(result.longestIdle, kLongestIdle) << "the program hung";
  EXPECT_GT(result.echoes, 0U);
  EXPECT_GT(result.downloads, 0U);
  EXPECT_GT(result.messages, 0U);
  EXPECT_GT(result.saves, 0U);
  EXPECT_GT(result.pages, 0U);
  EXPECT_GT(result.refusedPages, 0U);
}

TEST(Monkey, ReplaysASeedExactly) {
  constexpr std::uint64_t kEvents = 5000;
  const MonkeyResult first = Monkey(seed() + 1).run(kEvents);
  const MonkeyResult second = Monkey(seed() + 1).run(kEvents);
  const MonkeyResult other = Monkey(seed() + 2).run(kEvents);
  EXPECT_EQ(first.digest, second.digest);
  EXPECT_EQ(first.tools, second.tools);
  EXPECT_NE(first.digest, other.digest);
}

}  // namespace
}  // namespace veltrin
