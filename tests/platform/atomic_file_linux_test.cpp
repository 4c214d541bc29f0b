// SPDX-License-Identifier: GPL-3.0-or-later
// What only Linux can show of replacing files: rights, links, full disks, killed
// programs.
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/portable/atomic_file.h"
#include "platform/portable/profile_file.h"
#include "scratch_folder.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;

// Ends of a child process of these tests.
constexpr int kPassed = 0;
constexpr int kFailed = 1;
constexpr int kNotPossible = 2;

// A user without rights of the administrator's; what this number stands for on a
// machine does not matter.
constexpr uid_t kNobody = 65534;

// Runs `body` in a child process and gives its end.
int inChild(const std::function<int()>& body) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(body());
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : kFailed;
}

// Mounts a file system of 64 KiB over the folder, seen by this process alone.
bool mountSmallDisk(const fs::path& folder) {
  const int spaces = ::geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
  return ::unshare(spaces) == 0 &&
         ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         ::mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=64k") == 0;
}

mode_t modeOf(const std::string& path) {
  struct stat status = {};
  ::stat(path.c_str(), &status);
  return status.st_mode & 07777;
}

TEST(ReplaceFileOnLinux, KeepsTheMode) {
  const ScratchFolder scratch;
  scratch.fill("old.txt", "old");
  ::chmod(scratch.path("old.txt").c_str(), 0640);
  EXPECT_FALSE(replaceFile(scratch.path("old.txt"), "new"));
  EXPECT_EQ(modeOf(scratch.path("old.txt")), 0640U);
}

TEST(ReplaceFileOnLinux, GivesANewFileTheModeOfTheUsersMask) {
  const ScratchFolder scratch;
  const mode_t before = ::umask(0027);
  EXPECT_FALSE(replaceFile(scratch.path("new.txt"), "new"));
  ::umask(before);
  EXPECT_EQ(modeOf(scratch.path("new.txt")), 0640U);
}

TEST(ReplaceFileOnLinux, KeepsTheOwnerForTheAdministrator) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator may give files away";
  const ScratchFolder scratch;
  scratch.fill("old.txt", "old");
  ASSERT_EQ(::chown(scratch.path("old.txt").c_str(), kNobody, kNobody), 0);
  EXPECT_FALSE(replaceFile(scratch.path("old.txt"), "new"));
  struct stat status = {};
  ::stat(scratch.path("old.txt").c_str(), &status);
  EXPECT_EQ(status.st_uid, kNobody);
}

TEST(ReplaceFileOnLinux, ReplacesTheFileThatALinkLeadsTo) {
  const ScratchFolder scratch;
  fs::create_directory(scratch.path("there"));
  scratch.fill("there/old.txt", "old");
  fs::create_symlink("there/old.txt", scratch.path("link.txt"));
  EXPECT_FALSE(replaceFile(scratch.path("link.txt"), "new"));
  EXPECT_TRUE(fs::is_symlink(scratch.path("link.txt")));
  EXPECT_EQ(scratch.content("there/old.txt"), "new");
}

TEST(ReplaceFileOnLinux, MakesTheMissingFileThatALinkLeadsTo) {
  const ScratchFolder scratch;
  fs::create_symlink("new.txt", scratch.path("link.txt"));
  EXPECT_FALSE(replaceFile(scratch.path("link.txt"), "new"));
  EXPECT_TRUE(fs::is_symlink(scratch.path("link.txt")));
  EXPECT_EQ(scratch.content("new.txt"), "new");
}

TEST(ReplaceFileOnLinux, RefusesACircleOfLinks) {
  const ScratchFolder scratch;
  fs::create_symlink("b", scratch.path("a"));
  fs::create_symlink("a", scratch.path("b"));
  EXPECT_EQ(replaceFile(scratch.path("a"), "new"), std::errc::too_many_symbolic_link_levels);
}

TEST(ReplaceFileOnLinux, RefusesADevice) {
  EXPECT_EQ(replaceFile("/dev/null", "new"), std::errc::invalid_argument);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(ReplaceFileOnLinux, LeavesTheOldFileInAFolderThatMayNotBeWritten) {
  const ScratchFolder scratch;
  scratch.fill("old.txt", "old");
  fs::permissions(scratch.path("old.txt"), fs::perms::all);
  fs::permissions(scratch.folder(), fs::perms::owner_read | fs::perms::owner_exec |
                                        fs::perms::others_read | fs::perms::others_exec);
  const int end = inChild([&] {
    if (::geteuid() == 0 && ::setuid(kNobody) != 0) return kNotPossible;
    const auto error = replaceFile(scratch.path("old.txt"), "new");
    return error == std::errc::permission_denied ? kPassed : kFailed;
  });
  fs::permissions(scratch.folder(), fs::perms::owner_all);
  if (end == kNotPossible) GTEST_SKIP() << "this machine does not let a user be left";
  EXPECT_EQ(end, kPassed);
  EXPECT_EQ(scratch.content("old.txt"), "old");
}

TEST(ReplaceFileOnLinux, LeavesAFileThatMayNotBeWritten) {
  const ScratchFolder scratch;
  scratch.fill("old.txt", "old");
  fs::permissions(scratch.path("old.txt"), fs::perms::owner_read | fs::perms::others_read);
  fs::permissions(scratch.folder(), fs::perms::all);
  const int end = inChild([&] {
    if (::geteuid() == 0 && ::setuid(kNobody) != 0) return kNotPossible;
    const auto error = replaceFile(scratch.path("old.txt"), "new");
    return error == std::errc::permission_denied ? kPassed : kFailed;
  });
  if (end == kNotPossible) GTEST_SKIP() << "this machine does not let a user be left";
  EXPECT_EQ(end, kPassed);
  EXPECT_EQ(scratch.content("old.txt"), "old");
}

TEST(ReplaceFileOnLinux, LeavesTheOldFileAndNothingElseOnAFullDisk) {
  const ScratchFolder scratch;
  const int end = inChild([&] {
    if (!mountSmallDisk(scratch.folder())) return kNotPossible;
    scratch.fill("old.txt", "old");
    const auto error = replaceFile(scratch.path("old.txt"), std::string(200000, 'x'));
    const bool whole = scratch.content("old.txt") == "old" && scratch.count() == 1;
    return error == std::errc::no_space_on_device && whole ? kPassed : kFailed;
  });
  if (end == kNotPossible) GTEST_SKIP() << "this machine does not let a small disk be mounted";
  EXPECT_EQ(end, kPassed);
}

TEST(ProfileFileOnLinux, KeepsItsSettingsOnAFullDisk) {
  const ScratchFolder scratch;
  const int end = inChild([&] {
    if (!mountSmallDisk(scratch.folder())) return kNotPossible;
    scratch.fill("Veltrin.dat", "[A]\r\nk=1\r\n");
    scratch.fill("filling", std::string(60000, 'x'));
    ProfileFile file([&](const std::string& path) { return scratch.path(path); });
    const bool written = file.write("A", "j", std::string(20000, 'x'), "Veltrin.dat");
    const bool whole = scratch.content("Veltrin.dat") == "[A]\r\nk=1\r\n";
    return !written && whole ? kPassed : kFailed;
  });
  if (end == kNotPossible) GTEST_SKIP() << "this machine does not let a small disk be mounted";
  EXPECT_EQ(end, kPassed);
}

// Writes 'a's, then 'b's and so on until it is killed, and says so after each.
void writeForEver(const std::string& path, int tell) {
  for (char letter = 'a';; letter = letter == 'z' ? 'a' : static_cast<char>(letter + 1)) {
    if (replaceFile(path, std::string(50000, letter)) || ::write(tell, &letter, 1) != 1) ::_exit(1);
  }
}

TEST(ReplaceFileOnLinux, LeavesAWholeFileWhereverTheProgramIsKilled) {
  const ScratchFolder scratch;
  scratch.fill("file.txt", std::string(50000, 'a'));
  for (int round = 1; round <= 30; ++round) {
    int ends[2] = {};
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) writeForEver(scratch.path("file.txt"), ends[1]);
    ::close(ends[1]);
    char letter = 0;
    for (int i = 0; i < round % 4; ++i) ASSERT_EQ(::read(ends[0], &letter, 1), 1);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ::close(ends[0]);
    const std::string content = scratch.content("file.txt");
    ASSERT_EQ(content, std::string(50000, content.empty() ? ' ' : content.front()));
  }
}

}  // namespace
}  // namespace veltrin
