// SPDX-License-Identifier: GPL-3.0-or-later
// What Linux writes into text files, and what it refuses.
#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "text_files.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;
constexpr unsigned kPatience = 20;  // seconds, until what hangs is ended

// What a forked copy of this program finds out, as its exit code; -1 when it hung.
int inChild(const std::function<int()>& action) {
  const pid_t child = fork();
  if (child == 0) {
    alarm(kPatience);
    _exit(action());
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The same without root's rights.
int asNobody(const std::function<int()>& action) {
  return inChild([&] { return geteuid() == 0 && seteuid(kNobody) != 0 ? 1 : action(); });
}

class TextFileLinuxTest : public TextFileTest {
 protected:
  void SetUp() override { chmod(scratch.folder().c_str(), 0755); }
};

TEST_F(TextFileLinuxTest, IsInUtf8) {
  store("a.txt", "Ø\r\n");
  EXPECT_EQ(scratch.content("a.txt"), "\xC3\x98\r\n");
}

TEST_F(TextFileLinuxTest, GivesBytesThatAreNoCharactersAsTheyAre) {
  scratch.fill("a.txt", "a\xD8\xFF");
  EXPECT_EQ(read("a.txt"), "a\xD8\xFF");
}

TEST_F(TextFileLinuxTest, ThatThePathOfTheSystemNamesIsReadAndWritten) {
  files.openOutput(scratch.path("a.txt"))->Write("text");
  EXPECT_EQ(files.readText(scratch.path("a.txt")), "text");
  EXPECT_EQ(share.count(), 0U);
}

TEST_F(TextFileLinuxTest, OfTheShareIsReadAndNeverWritten) {
  share.fill("a.txt", "shared");
  EXPECT_EQ(read("a.txt"), "shared");
  store("a.txt", "own");
  EXPECT_EQ(read("a.txt"), "own");
  EXPECT_EQ(share.content("a.txt"), "shared");
}

TEST_F(TextFileLinuxTest, IsNoPipe) {
  ASSERT_EQ(mkfifo(scratch.path("a.txt").c_str(), 0666), 0);
  EXPECT_EQ(inChild([this] { return failureOfReading("a.txt"); }), 70);
  EXPECT_EQ(inChild([this] { return failureOfStoring("a.txt"); }), 52);
  EXPECT_TRUE(fs::is_fifo(scratch.folder() / "a.txt"));
}

TEST_F(TextFileLinuxTest, IsNoDevice) {
  fs::create_symlink("/dev/zero", scratch.folder() / "a.txt");
  EXPECT_EQ(inChild([this] { return failureOfReading("a.txt"); }), 70);
  // What is stored stays in the folder, whatever a link in it leads to.
  EXPECT_EQ(inChild([this] { return failureOfStoring("a.txt"); }), 70);
  EXPECT_TRUE(fs::is_character_file("/dev/zero"));
}

TEST_F(TextFileLinuxTest, IsNoLinkThatLeadsNowhere) {
  fs::create_symlink("a.txt", scratch.folder() / "a.txt");
  EXPECT_EQ(failureOfReading("a.txt"), 57);
}

TEST_F(TextFileLinuxTest, IsNotReadByAUserWithoutTheRight) {
  scratch.fill("a.txt", "old");
  chmod(scratch.path("a.txt").c_str(), 0200);
  EXPECT_EQ(asNobody([this] { return failureOfReading("a.txt"); }), 70);
}

TEST_F(TextFileLinuxTest, IsNotWrittenByAUserWithoutTheRight) {
  scratch.fill("a.txt", "old");
  chmod(scratch.path("a.txt").c_str(), 0444);
  EXPECT_EQ(asNobody([this] { return failureOfStoring("a.txt"); }), 70);
  EXPECT_EQ(scratch.content("a.txt"), "old");
}

TEST_F(TextFileLinuxTest, IsNotMadeInAFolderWhereTheUserMayNotWrite) {
  chmod(scratch.folder().c_str(), 0555);
  EXPECT_EQ(asNobody([this] { return failureOfStoring("a.txt"); }), 70);
  chmod(scratch.folder().c_str(), 0755);
  EXPECT_FALSE(scratch.has("a.txt"));
}

TEST_F(TextFileLinuxTest, ThatIsOlderStaysWholeOnAFullDisk) {
  scratch.fill("a.txt", "old");
  const int failure = inChild([this] {
    // A limit on the size of files stands for a disk without room.
    const rlimit limit{1000, 1000};
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    return failureOfStoring("a.txt", std::string(5000, 'x'));
  });
  EXPECT_EQ(failure, 61);
  EXPECT_EQ(scratch.content("a.txt"), "old");
  EXPECT_EQ(scratch.count(), 1U);
}

TEST_F(TextFileLinuxTest, IsFoundWhateverTheCaseOfItsName) {
  scratch.fill("A.TXT", "old");
  EXPECT_EQ(read("a.txt"), "old");
  store("a.txt", "new");
  EXPECT_EQ(scratch.content("A.TXT"), "new");
  EXPECT_EQ(scratch.count(), 1U);
}

}  // namespace
}  // namespace veltrin
