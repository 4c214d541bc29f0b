// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/updates.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

std::string logged(const std::string& action) { return "2026-01-30 15:22:51 " + action + "\n"; }

// What dpkg writes of an update that succeeds.
std::string upgraded(const std::string& package, const std::string& old,
                     const std::string& version) {
  return logged("upgrade " + package + " " + old + " " + version) +
         logged("status half-configured " + package + " " + old) +
         logged("status unpacked " + package + " " + version) +
         logged("configure " + package + " " + version + " <none>") +
         logged("status installed " + package + " " + version);
}

std::string installed(const std::string& package, const std::string& version) {
  return logged("install " + package + " <none> " + version) +
         logged("status installed " + package + " " + version);
}

template <typename Log>
std::optional<std::vector<std::string>> updatesIn(const std::string& text) {
  Log log;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    log.take(line);
  }
  return log.updates();
}

std::optional<std::vector<std::string>> updatesInDpkgLog(const std::string& text) {
  return updatesIn<DpkgLog>(text);
}

std::optional<std::vector<std::string>> updatesInPacmanLog(const std::string& text) {
  return updatesIn<PacmanLog>(text);
}

TEST(UpdatesInDpkgLog, AreThePackagesThatWereUpgraded) {
  EXPECT_THAT(updatesInDpkgLog(logged("startup archives unpack") + installed("a:amd64", "1") +
                               upgraded("b:amd64", "1.0-1", "1.0-2") + upgraded("c:all", "2", "3")),
              Optional(ElementsAre("b:amd64 1.0-2", "c:all 3")));
}

TEST(UpdatesInDpkgLog, NameAPackageOnceWithItsLastVersion) {
  EXPECT_THAT(updatesInDpkgLog(upgraded("b:amd64", "1", "2") + upgraded("c:amd64", "1", "2") +
                               upgraded("b:amd64", "2", "3")),
              Optional(ElementsAre("c:amd64 2", "b:amd64 3")));
}

TEST(UpdatesInDpkgLog, LeaveOutWhatIsNotInstalledAnyMore) {
  EXPECT_THAT(updatesInDpkgLog(upgraded("b:amd64", "1", "2") + logged("remove b:amd64 2 <none>") +
                               upgraded("c:amd64", "1", "2") + logged("purge c:amd64 2 <none>")),
              Optional(IsEmpty()));
}

TEST(UpdatesInDpkgLog, LeaveOutWhatWasInstalledAnew) {
  EXPECT_THAT(updatesInDpkgLog(upgraded("b:amd64", "1", "2") + logged("remove b:amd64 2 <none>") +
                               installed("b:amd64", "2")),
              Optional(IsEmpty()));
}

TEST(UpdatesInDpkgLog, LeaveOutAReinstalledVersion) {
  EXPECT_THAT(updatesInDpkgLog(upgraded("b:amd64", "1", "1")), Optional(IsEmpty()));
}

TEST(UpdatesInDpkgLog, LeaveOutAnUpgradeThatDidNotSucceed) {
  EXPECT_THAT(
      updatesInDpkgLog(logged("upgrade b:amd64 1 2") + logged("status half-installed b:amd64 1") +
                       logged("status installed b:amd64 1")),
      Optional(IsEmpty()));
}

TEST(UpdatesInDpkgLog, AreUnknownWithoutALineOfIt) {
  for (const char* text : {"", "\n\n", "garbage\xFF\x01", "2026-01-30 15:22 upgrade a 1 2\n",
                           "2026-01-30T15:22:51 upgrade a 1 2\n", "2026-01-30 15:22:51 "}) {
    EXPECT_EQ(updatesInDpkgLog(text), std::nullopt) << text;
  }
}

TEST(UpdatesInDpkgLog, PassOverBrokenLines) {
  EXPECT_THAT(updatesInDpkgLog(logged("upgrade") + logged("upgrade b") + logged("remove") +
                               logged("remove ") + logged("status installed b") +
                               upgraded("c:amd64", "1", "2")),
              Optional(ElementsAre("c:amd64 2")));
}

TEST(UpdatesInPacmanLog, AreThePackagesThatWereUpgraded) {
  EXPECT_THAT(
      updatesInPacmanLog("[2026-01-30T16:22:51+0100] [PACMAN] Running 'pacman -Syu'\n"
                         "[2026-01-30T16:22:51+0100] [ALPM] transaction started\n"
                         "[2026-01-30T16:22:51+0100] [ALPM] installed new (1-1)\n"
                         "[2026-01-30T16:22:52+0100] [ALPM] upgraded linux (6.8.7-1 -> 6.8.8-1)\n"
                         "[2026-01-30T16:22:52+0100] [ALPM] upgraded gone (1-1 -> 1-2)\n"
                         "[2026-01-30T16:22:52+0100] [ALPM] upgraded back (1-1 -> 1-2)\n"
                         "[2026-01-30T16:22:53+0100] [ALPM] upgraded zlib (1-1 -> 1-2)\n"
                         "[2026-01-31T16:22:51+0100] [ALPM] removed gone (1-2)\n"
                         "[2026-01-31T16:22:51+0100] [ALPM] downgraded back (1-2 -> 1-1)\n"
                         "[2026-01-31T16:22:51+0100] [ALPM] upgraded linux (6.8.8-1 -> 6.8.9-1)\n"),
      Optional(ElementsAre("zlib 1-2", "linux 6.8.9-1")));
}

TEST(UpdatesInPacmanLog, AreUnknownWithoutALineOfIt) {
  for (const char* text : {"", "garbage [ALPM] upgraded a (1 -> 2)\n",
                           "x] [ALPM] upgraded a (1 -> 2)\n", "\xFF\x01"}) {
    EXPECT_EQ(updatesInPacmanLog(text), std::nullopt) << text;
  }
}

TEST(Updates, GoOnFromTheLogBeforeTheLast) {
  const TemporaryTree tree;
  tree.put("/var/log/dpkg.log.1", upgraded("b:amd64", "1", "2") + "cut off");
  tree.put("/var/log/dpkg.log", upgraded("c:amd64", "1", "2"));
  EXPECT_THAT(updatesOf(tree.files()), Optional(ElementsAre("b:amd64 2", "c:amd64 2")));
}

TEST(Updates, AreNoneInALogWithoutUpgrades) {
  const TemporaryTree tree;
  tree.put("/var/log/dpkg.log", installed("a:amd64", "1"));
  EXPECT_THAT(updatesOf(tree.files()), Optional(IsEmpty()));
}

TEST(Updates, AreTheOtherPackageManagersWhereThatIsInUse) {
  const TemporaryTree tree;
  tree.put("/var/log/dpkg.log", "");
  tree.put("/var/log/pacman.log", "[2026-01-30T16:22:52+0100] [ALPM] upgraded a (1 -> 2)\n");
  EXPECT_THAT(updatesOf(tree.files()), Optional(ElementsAre("a 2")));
}

TEST(Updates, AreUnknownWithoutALog) {
  EXPECT_EQ(updatesOf(TemporaryTree().files()), std::nullopt);
}

}  // namespace
}  // namespace veltrin
