// SPDX-License-Identifier: GPL-3.0-or-later
// What Linux refuses of files that are written over in their place.
#include <cerrno>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "byte_files.h"

namespace veltrin {
namespace {

// What a forked copy of this program without root's rights finds out, as its exit code.
int asNobody(const std::function<int()>& action) {
  const pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && seteuid(65534) != 0) _exit(1);
    _exit(action());
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

using ByteFileLinuxTest = ByteFileTest;

TEST_F(ByteFileLinuxTest, FailsWhereTheUserMayNotMakeIt) {
  chmod(scratch.folder().c_str(), 0555);
  EXPECT_EQ(asNobody([&] { return failureOfOpening("a.bin"); }), 70);
  chmod(scratch.folder().c_str(), 0755);
}

TEST_F(ByteFileLinuxTest, FailsWhereTheUserMayNotWriteIt) {
  chmod(scratch.folder().c_str(), 0755);
  scratch.fill("a.bin", "old");
  chmod(scratch.path("a.bin").c_str(), 0444);
  EXPECT_EQ(asNobody([&] { return failureOfOpening("a.bin"); }), 70);
  EXPECT_EQ(scratch.content("a.bin"), "old");
}

TEST_F(ByteFileLinuxTest, IsNotDeletedWhereTheUserMayNotWrite) {
  scratch.fill("a.bin", "old");
  chmod(scratch.folder().c_str(), 0555);
  EXPECT_EQ(asNobody([&] { return failureOfKilling("a.bin"); }), 70);
  chmod(scratch.folder().c_str(), 0755);
  EXPECT_TRUE(scratch.has("a.bin"));
}

TEST_F(ByteFileLinuxTest, TellsOfAFullDisk) {
  const auto stream = files.openBinary("/dev/full");
  EXPECT_EQ(failureOf([&] { stream->Put("x"); }), 61);
}

TEST_F(ByteFileLinuxTest, IsMadeBesideOneOfTheShareThatItLeavesAlone) {
  share.fill("a.bin", "shared");
  put("a.bin", "own");
  EXPECT_EQ(share.content("a.bin"), "shared");
  EXPECT_EQ(scratch.content("a.bin"), "own");
}

TEST_F(ByteFileLinuxTest, IsNotDeletedInTheShare) {
  share.fill("a.bin", "shared");
  EXPECT_EQ(failureOfKilling("a.bin"), 53);
  EXPECT_EQ(share.content("a.bin"), "shared");
}

TEST_F(ByteFileLinuxTest, IsFoundWhateverTheCaseOfItsName) {
  scratch.fill("A.BIN", "longer");
  put("a.bin", "new");
  EXPECT_EQ(scratch.content("A.BIN"), "newger");
  EXPECT_EQ(failureOfKilling("a.bin"), 0);
  EXPECT_EQ(scratch.count(), 0U);
}

}  // namespace
}  // namespace veltrin
