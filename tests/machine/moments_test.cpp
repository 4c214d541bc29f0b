// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/moments.h"

#include <gtest/gtest.h>

#include "fake_machine.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

// --- Moments ---

TEST(MomentText, IsWrittenWithTheHalvesOfTheDay) {
  const FakeMachine machine;
  EXPECT_EQ(momentText(machine, 1769786571), "1/30/2026, 3:22:51 PM");
  EXPECT_EQ(momentText(machine, 1770027672), "2/2/2026, 10:21:12 AM");
}

TEST(MomentText, CountsTwelveAtMidnightAndNoon) {
  const FakeMachine machine;
  EXPECT_EQ(momentText(machine, 1735689600), "1/1/2025, 12:00:00 AM");
  EXPECT_EQ(momentText(machine, 1735732805), "1/1/2025, 12:00:05 PM");
}

TEST(MomentText, IsOfTheLocalClock) {
  FakeMachine machine;
  machine.offset = -5 * 60;
  EXPECT_EQ(momentText(machine, 1735689600), "12/31/2024, 7:00:00 PM");
}

TEST(MomentInLog, IsReadWithItsOffset) {
  EXPECT_EQ(momentInLog("[2026-01-30T16:22:51+0100] [ALPM] installed x (1)"), 1769786571);
  EXPECT_EQ(momentInLog("[2026-01-30T09:52:51-0530]"), 1769786571);
}

TEST(MomentInLog, OfAnotherFormIsNothing) {
  for (const char* line :
       {"", "[2026-01-30 16:22] x", "[2026-01-30T16:22:51 0100]", "[2026-13-30T16:22:51+0100]",
        "[2026-02-30T16:22:51+0100]", " [2026-01-30T16:22:51+0100]", "[2026-01-30T16:22:51+010]"}) {
    EXPECT_EQ(momentInLog(line), std::nullopt) << line;
  }
}

// --- Time zones ---

class TimeZone : public ::testing::Test {
 protected:
  std::string text() { return timeZoneText(tree_.files(), machine_); }

  TemporaryTree tree_;
  FakeMachine machine_;
};

TEST_F(TimeZone, IsTheOneThatTheSystemLinksTo) {
  tree_.link("/etc/localtime", "/usr/share/zoneinfo/Europe/Berlin");
  machine_.offset = 60;
  EXPECT_EQ(text(), "(UTC+01:00) Europe/Berlin");
}

TEST_F(TimeZone, TellsDistancesToTheWestAndOfParts) {
  tree_.link("/etc/localtime", "../usr/share/zoneinfo/posix/America/St_Johns");
  machine_.offset = -210;
  EXPECT_EQ(text(), "(UTC-03:30) America/St_Johns");
}

TEST_F(TimeZone, OfUtcHasItsFullName) {
  tree_.link("/etc/localtime", "/usr/share/zoneinfo/Etc/UTC");
  EXPECT_EQ(text(), "(UTC) Coordinated Universal Time");
}

TEST_F(TimeZone, AtTheSameTimeAsUtcKeepsItsName) {
  tree_.link("/etc/localtime", "/usr/share/zoneinfo/Europe/London");
  EXPECT_EQ(text(), "(UTC+00:00) Europe/London");
}

TEST_F(TimeZone, IsNamedByAFileWhereThereIsNoLink) {
  tree_.put("/etc/localtime", "TZif2");
  tree_.put("/etc/timezone", "Asia/Tokyo\n");
  machine_.offset = 9 * 60;
  EXPECT_EQ(text(), "(UTC+09:00) Asia/Tokyo");
}

TEST_F(TimeZone, OfTheEnvironmentGoesFirst) {
  tree_.link("/etc/localtime", "/usr/share/zoneinfo/Europe/Berlin");
  tree_.put("/usr/share/zoneinfo/Asia/Tokyo", "TZif2");
  machine_.offset = 9 * 60;
  for (const char* choice : {"Asia/Tokyo", ":Asia/Tokyo", "/usr/share/zoneinfo/Asia/Tokyo"}) {
    machine_.variables["TZ"] = choice;
    EXPECT_EQ(text(), "(UTC+09:00) Asia/Tokyo") << choice;
  }
}

TEST_F(TimeZone, OfARuleInTheEnvironmentGoesByItsAbbreviation) {
  tree_.link("/etc/localtime", "/usr/share/zoneinfo/Europe/Berlin");
  machine_.variables["TZ"] = "EST5EDT,M3.2.0,M11.1.0";
  machine_.offset = -300;
  machine_.zone = "EST";
  EXPECT_EQ(text(), "(UTC-05:00) EST");
}

TEST_F(TimeZone, WithoutASettingIsUtc) { EXPECT_EQ(text(), "(UTC) Coordinated Universal Time"); }

}  // namespace
}  // namespace veltrin
