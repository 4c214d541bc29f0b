// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "lab/pace.h"

namespace veltrin::lab {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr Time kBegin = seconds(1000);

WebSite siteOf(std::uint64_t rate, std::optional<WebStall> stall = std::nullopt) {
  WebSite site;
  site.rate = rate;
  site.stall = stall;
  return site;
}

// Takes all that is allowed at a moment since the begin, and tells how much that was.
std::uint64_t take(Pace& pace, Time at) {
  const std::uint64_t bytes = pace.allowed(kBegin + at);
  pace.sent(bytes, kBegin + at);
  return bytes;
}

TEST(LabPace, AllowsNothingAtFirst) {
  Pace pace(siteOf(1000), kBegin);
  EXPECT_EQ(pace.allowed(kBegin), 0U);
}

TEST(LabPace, AllowsWhatIsDueWhetherTakenOftenOrSeldom) {
  Pace seldom(siteOf(100'000), kBegin);
  EXPECT_EQ(take(seldom, milliseconds(200)), 20'000U);
  Pace often(siteOf(100'000), kBegin);
  std::uint64_t sum = 0;
  for (int at = 1; at <= 200; ++at) sum += take(often, milliseconds(at));
  EXPECT_EQ(sum, 20'000U);
}

TEST(LabPace, KeepsARateThatIsNoWholeNumberOfBytesATick) {
  Pace pace(siteOf(333), kBegin);
  std::uint64_t sum = 0;
  for (int at = 5; at <= 100'000; at += 5) sum += take(pace, milliseconds(at));
  EXPECT_EQ(sum, 33'300U);
}

TEST(LabPace, MakesUpForAShortDelayOnly) {
  Pace pace(siteOf(1000), kBegin);
  EXPECT_EQ(take(pace, seconds(10)), 250U);
  EXPECT_EQ(take(pace, seconds(10) + milliseconds(1)), 1U);
}

TEST(LabPace, StopsAtThePlaceOfThePauseAndGoesOnBehindIt) {
  Pace pace(siteOf(1000, WebStall{150, seconds(2)}), kBegin);
  EXPECT_EQ(take(pace, milliseconds(100)), 100U);
  EXPECT_EQ(take(pace, milliseconds(200)), 50U);
  EXPECT_EQ(pace.next(kBegin + milliseconds(200)), kBegin + milliseconds(2200));
  EXPECT_EQ(take(pace, milliseconds(2199)), 0U);
  EXPECT_EQ(take(pace, milliseconds(2300)), 100U);
  EXPECT_EQ(take(pace, milliseconds(2400)), 100U);
}

TEST(LabPace, PausesOnce) {
  Pace pace(siteOf(1000, WebStall{10, seconds(1)}), kBegin);
  take(pace, milliseconds(10));
  std::uint64_t sum = 0;
  for (int at = 1010; at <= 3010; at += 100) sum += take(pace, milliseconds(at));
  EXPECT_EQ(sum, 2000U);
}

TEST(LabPace, PausesBeforeTheFirstByte) {
  Pace pace(siteOf(1000, WebStall{0, seconds(1)}), kBegin);
  EXPECT_EQ(take(pace, milliseconds(1000)), 0U);
  EXPECT_EQ(take(pace, milliseconds(1100)), 100U);
}

TEST(LabPace, AsksAgainAfterATick) {
  const Pace pace(siteOf(1000), kBegin);
  EXPECT_EQ(pace.next(kBegin + seconds(1)), kBegin + seconds(1) + Pace::kTick);
}

TEST(LabPace, HoldsTheHighestRate) {
  Pace pace(siteOf(kMostWebRate), kBegin);
  EXPECT_EQ(take(pace, milliseconds(250)), 250'000'000U);
}

}  // namespace
}  // namespace veltrin::lab
