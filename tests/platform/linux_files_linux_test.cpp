// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <signal.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "failure_of.h"
#include "platform/linux/linux_files.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;

// What a forked copy of this program finds out, as its exit code.
int inChild(const std::function<int()>& action) {
  const pid_t child = fork();
  if (child == 0) _exit(action());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void put(const fs::path& path, const std::string& content) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << content;
}

std::string contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return "no such file";
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> entriesOf(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
  return names;
}

class LinuxFilesTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = fs::temp_directory_path() / "veltrin-files-XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    root_ = pattern;
    chmod(pattern.c_str(), 0755);
    fs::create_directories(data());
    fs::create_directories(share());
  }

  void TearDown() override { fs::remove_all(root_); }

  fs::path data() const { return root_ / "data"; }
  fs::path share() const { return root_ / "share"; }
  LinuxFiles files() const { return LinuxFiles({data(), share()}); }

  std::unique_ptr<TextStream> open(const std::string& name, FileMode mode = FileMode::Writing,
                                   bool create = true) const {
    return files().OpenTextFile(data(), name, mode, create);
  }

  int failureOfOpening(const std::string& name, FileMode mode = FileMode::Writing,
                       bool create = true) const {
    return failureOf([&] { open(name, mode, create); });
  }

  fs::path root_;
};

TEST_F(LinuxFilesTest, GivesTheDataFolderWithoutASeparatorAsProgramFolder) {
  EXPECT_EQ(LinuxFiles({"/a/b/", "/c"}).programFolder(), "/a/b");
}

TEST_F(LinuxFilesTest, TurnsBackslashesIntoSlashes) {
  EXPECT_EQ(files().native(data().string() + "\\Sub\\List.txt"), data() / "Sub" / "List.txt");
}

TEST_F(LinuxFilesTest, TurnsThePathOfAnotherFolderToo) {
  EXPECT_EQ(files().native("/elsewhere\\a.txt"), "/elsewhere/a.txt");
  EXPECT_EQ(files().native(data().string() + "-more\\a.txt"), data().string() + "-more/a.txt");
}

TEST_F(LinuxFilesTest, KeepsBackslashesOfTheDataFoldersOwnName) {
  const LinuxFiles odd({root_ / "back\\slash", share()});
  EXPECT_EQ(odd.native(odd.programFolder() + "\\a.txt"), root_ / "back\\slash" / "a.txt");
}

TEST_F(LinuxFilesTest, FindsAFileOfTheShareThatTheDataFolderLacks) {
  put(share() / "files" / "ping.avi", "clip");
  EXPECT_EQ(files().native(data().string() + "\\files\\ping.avi"), share() / "files" / "ping.avi");
}

TEST_F(LinuxFilesTest, PrefersTheFileOfTheDataFolder) {
  put(share() / "a.ini", "shared");
  put(data() / "a.ini", "own");
  EXPECT_EQ(files().native(data().string() + "\\a.ini"), data() / "a.ini");
}

TEST_F(LinuxFilesTest, GivesTheDataFoldersPathForAFileThatIsNowhere) {
  EXPECT_EQ(files().native(data().string() + "\\a.ini"), data() / "a.ini");
}

TEST_F(LinuxFilesTest, FindsFilesAndFoldersWhateverTheCase) {
  put(share() / "Files" / "Ping.AVI", "clip");
  fs::create_directories(data() / "FILES");
  EXPECT_EQ(files().native(data().string() + "\\files\\ping.avi"), share() / "Files" / "Ping.AVI");
}

TEST_F(LinuxFilesTest, PrefersTheExactCase) {
  put(data() / "A.ini", "");
  put(data() / "a.ini", "");
  EXPECT_EQ(files().native(data().string() + "\\a.ini"), data() / "a.ini");
}

TEST_F(LinuxFilesTest, FindsTheDefaultFoldersAndMakesThemForTheUserAlone) {
  setenv("XDG_DATA_HOME", (root_ / "xdg").c_str(), 1);
  const LinuxFiles::Folders folders = LinuxFiles::defaultFolders();
  unsetenv("XDG_DATA_HOME");
  EXPECT_EQ(folders.data, root_ / "xdg" / "veltrin");
  EXPECT_TRUE(fs::is_directory(root_ / "xdg" / "veltrin" / "Files"));
  EXPECT_EQ(fs::status(folders.data).permissions(), fs::perms::owner_all);
  EXPECT_THAT(folders.share, testing::EndsWith("/share/veltrin"));
}

TEST_F(LinuxFilesTest, PassesOverADataHomeThatIsNotAbsolute) {
  setenv("XDG_DATA_HOME", "relative", 1);
  const char* const before = std::getenv("HOME");
  const std::string home = before == nullptr ? "/" : before;
  setenv("HOME", root_.c_str(), 1);
  EXPECT_EQ(LinuxFiles::defaultFolders().data, root_ / ".local" / "share" / "veltrin");
  setenv("HOME", home.c_str(), 1);
  unsetenv("XDG_DATA_HOME");
}

TEST_F(LinuxFilesTest, WritesANewFile) {
  const auto stream = open("\\PingTest.txt");
  stream->Write("one\r\n");
  stream->Write("h\xC3\xB6st\r\n");
  stream->Close();
  EXPECT_EQ(contentOf(data() / "PingTest.txt"), "one\r\nh\xC3\xB6st\r\n");
}

TEST_F(LinuxFilesTest, MakesAMissingFileWhenItIsOpened) {
  const auto stream = open("\\new.txt");
  EXPECT_EQ(contentOf(data() / "new.txt"), "");
}

TEST_F(LinuxFilesTest, LeavesOlderContentUntilTheStreamIsClosed) {
  put(data() / "a.txt", "old");
  const auto stream = open("\\a.txt");
  stream->Write("new");
  EXPECT_EQ(contentOf(data() / "a.txt"), "old");
  stream->Close();
  EXPECT_EQ(contentOf(data() / "a.txt"), "new");
}

TEST_F(LinuxFilesTest, AppendsToOlderContent) {
  put(data() / "a.txt", "old ");
  open("\\a.txt", FileMode::Appending)->Write("new");
  EXPECT_EQ(contentOf(data() / "a.txt"), "old new");
}

TEST_F(LinuxFilesTest, ReplacesAFileWhoseNameDiffersInCase) {
  put(data() / "pingtest.TXT", "old");
  open("\\PingTest.txt")->Write("new");
  EXPECT_THAT(entriesOf(data()), testing::ElementsAre("pingtest.TXT"));
  EXPECT_EQ(contentOf(data() / "pingtest.TXT"), "new");
}

TEST_F(LinuxFilesTest, NeverWritesToTheShare) {
  put(share() / "a.ini", "shared");
  open("\\a.ini")->Write("own");
  EXPECT_EQ(contentOf(share() / "a.ini"), "shared");
  EXPECT_EQ(contentOf(data() / "a.ini"), "own");
}

TEST_F(LinuxFilesTest, ClosesAStreamThatIsDestroyed) {
  open("\\a.txt")->Write("text");
  EXPECT_EQ(contentOf(data() / "a.txt"), "text");
}

TEST_F(LinuxFilesTest, LeavesNothingElseInTheFolder) {
  open("\\a.txt")->Write("text");
  EXPECT_THAT(entriesOf(data()), testing::ElementsAre("a.txt"));
}

TEST_F(LinuxFilesTest, FailsToWriteToAClosedStream) {
  const auto stream = open("\\a.txt");
  stream->Close();
  EXPECT_EQ(failureOf([&] { stream->Write("x"); }), 54);
}

TEST_F(LinuxFilesTest, FailsForANameThatWindowsRefuses) {
  for (const std::string name :
       {"\\a?.txt", "\\con", "\\..", "\\sub\\a.txt", "\\sub/a.txt", "\\"}) {
    EXPECT_EQ(failureOfOpening(name), 52) << name;
  }
  EXPECT_THAT(entriesOf(data()), testing::IsEmpty());
}

TEST_F(LinuxFilesTest, FailsForAPathOfMoreThan259Characters) {
  EXPECT_EQ(failureOfOpening("\\" + std::string(250, 'a')), 52);
}

TEST_F(LinuxFilesTest, FailsForReading) {
  put(data() / "a.txt", "old");
  EXPECT_EQ(failureOfOpening("\\a.txt", FileMode::Reading), 54);
}

TEST_F(LinuxFilesTest, FailsForAMissingFileThatIsNotToBeMade) {
  EXPECT_EQ(failureOfOpening("\\a.txt", FileMode::Writing, false), 53);
  EXPECT_FALSE(fs::exists(data() / "a.txt"));
}

TEST_F(LinuxFilesTest, FailsForAMissingFolder) {
  fs::remove_all(data());
  EXPECT_EQ(failureOfOpening("\\a.txt"), 76);
}

TEST_F(LinuxFilesTest, FailsForAFolderOfThatName) {
  fs::create_directories(data() / "a.txt");
  EXPECT_EQ(failureOfOpening("\\a.txt"), 70);
}

TEST_F(LinuxFilesTest, FailsInAFolderWhereTheUserMayNotWrite) {
  chmod(data().c_str(), 0555);
  const int failure = inChild([this] {
    if (geteuid() == 0 && seteuid(65534) != 0) return 1;
    return failureOfOpening("\\a.txt");
  });
  chmod(data().c_str(), 0755);
  EXPECT_EQ(failure, 70);
}

TEST_F(LinuxFilesTest, LeavesTheOlderFileWholeWhenTheDiskIsFull) {
  put(data() / "a.txt", "old");
  const int failure = inChild([this] {
    // A limit on the size of files stands for a disk without room.
    const rlimit limit{1000, 1000};
    signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    const auto stream = open("\\a.txt");
    stream->Write(std::string(5000, 'x'));
    return failureOf([&] { stream->Close(); });
  });
  EXPECT_EQ(failure, 61);
  EXPECT_EQ(contentOf(data() / "a.txt"), "old");
  EXPECT_THAT(entriesOf(data()), testing::ElementsAre("a.txt"));
}

TEST_F(LinuxFilesTest, KnowsWhatIsBelowTheProgramFolder) {
  put(data() / "Files" / "a.txt", "");
  EXPECT_TRUE(files().exists(data().string() + "\\Files\\a.txt"));
  EXPECT_TRUE(files().exists(data().string() + "\\files\\A.TXT"));
  EXPECT_FALSE(files().exists(data().string() + "\\Files\\b.txt"));
}

TEST_F(LinuxFilesTest, KnowsWhatStandsInTheShareAlone) {
  put(share() / "help" / "index.html", "");
  EXPECT_TRUE(files().exists(data().string() + "\\help\\index.html"));
}

TEST_F(LinuxFilesTest, KnowsFolders) {
  EXPECT_TRUE(files().exists(data().string()));
  EXPECT_TRUE(files().exists(share().string()));
}

TEST_F(LinuxFilesTest, KnowsTheSystemsOwnPathsByTheirCase) {
  put(root_ / "a.txt", "");
  EXPECT_TRUE(files().exists((root_ / "a.txt").string()));
  EXPECT_FALSE(files().exists((root_ / "A.txt").string()));
}

TEST_F(LinuxFilesTest, KnowsNothingOfTheSystemByBackslashes) {
  EXPECT_FALSE(files().exists("\\"));
  EXPECT_FALSE(files().exists("\\Internet Explorer\\IEXPLORE.EXE"));
  EXPECT_FALSE(files().exists(root_.string() + "\\data\\..\\share"));
}

TEST_F(LinuxFilesTest, KnowsNoPathThatIsNone) {
  EXPECT_FALSE(files().exists(""));
  EXPECT_FALSE(files().exists(data().string() + std::string("\0x", 2)));
}

}  // namespace
}  // namespace veltrin
