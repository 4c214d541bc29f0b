// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the built fsutil on this machine and reads it through a pipe.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/console/program.h"

namespace veltrin {
namespace {

using ::testing::MatchesRegex;

TEST(FsUtilProgram, TellsTheRoomOfTheRoot) {
  for (const char* place : {"C:", "c:\\", "/"}) {
    Program tool(VELTRIN_FSUTIL, {"volume", "diskfree", place});
    EXPECT_THAT(tool.readRest(), MatchesRegex("Total # of free bytes        : [0-9]+\r\n"
                                              "Total # of bytes             : [1-9][0-9]*\r\n"
                                              "Total # of avail free bytes  : [0-9]+\r\n"));
    EXPECT_EQ(tool.readErrors(), "");
    EXPECT_EQ(tool.exitCode(), 0);
  }
}

TEST(FsUtilProgram, FollowsALinkToItsFolder) {
  Program direct(VELTRIN_FSUTIL, {"fsinfo", "volumeinfo", "/proc"});
  EXPECT_THAT(direct.readRest(), ::testing::HasSubstr("Mounted At : /proc\r\n"));
  Program linked(VELTRIN_FSUTIL, {"fsinfo", "volumeinfo", "/proc/self"});
  EXPECT_THAT(linked.readRest(), ::testing::HasSubstr("Mounted At : /proc\r\n"));
}

TEST(FsUtilProgram, RefusesWhatIsNoFolder) {
  for (const char* place : {"/proc/self/mountinfo", "/nowhere at all"}) {
    Program tool(VELTRIN_FSUTIL, {"volume", "diskfree", place});
    EXPECT_EQ(tool.readRest(), "There is no folder " + std::string(place) + ".\r\n");
    EXPECT_EQ(tool.exitCode(), 1);
  }
}

TEST(FsUtilProgram, RefusesADriveThatIsNotThere) {
  Program tool(VELTRIN_FSUTIL, {"dirty", "query", "Z:"});
  EXPECT_EQ(tool.readRest(), "There is no drive Z:.\r\n");
  EXPECT_EQ(tool.exitCode(), 1);
}

}  // namespace
}  // namespace veltrin
