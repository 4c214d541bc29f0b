// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "platform/linux/linux_files.h"
#include "platform/linux/linux_shell.h"
#include "platform/portable/command_limits.h"
#include "tests/platform/children.h"
#include "tests/platform/scratch_folder.h"
#include "text/statement.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

constexpr const char* kBrowser = "C:\\Program Files\\Internet Explorer\\IEXPLORE.EXE";
constexpr const char* kPage = "https://www.example.org/help?topic=1&page=2#top";

// A program folder, and a PATH that holds nothing but what a test puts there.
class LinuxShellTest : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(folder() / "data" / "Files");
    fs::create_directories(folder() / "bin");
    before_ = std::getenv("PATH");
    setenv("PATH", (folder() / "bin").c_str(), 1);
    putTeller("bin/xdg-open", "opener");
  }

  void TearDown() override {
    EXPECT_TRUE(noChildRemains());
    setenv("PATH", before_.c_str(), 1);
  }

  const fs::path& folder() const { return scratch_.folder(); }
  std::string data() const { return scratch_.path("data"); }

  void putScript(const std::string& name, const std::string& text) const {
    scratch_.fill(name, "#!/bin/sh\n" + text);
    fs::permissions(folder() / name, fs::perms::owner_all);
  }

  // A program that tells its arguments, one a line behind its own name.
  void putTeller(const std::string& name, const std::string& teller) const {
    putScript(name, "printf '%s\\n' " + teller + " \"$@\" >> '" + scratch_.path("told") + "'\n");
  }

  // What the programs that were started have told. Waits until they have ended.
  std::string told() const {
    EXPECT_TRUE(noChildRemains());
    return scratch_.content("told");
  }

  bool execute(const std::string& file, const std::string& parameters = {},
               const std::string& place = {}) {
    return shell_.execute("open", file, parameters, place, kShowNormal);
  }

  // Number of the failure of a command line; 0 when it does not fail.
  int failureOf(const std::string& commandLine) {
    try {
      shell_.run(commandLine, kShowMaximized);
      return 0;
    } catch (const StatementFailed& failure) {
      return failure.number();
    }
  }

  ScratchFolder scratch_;
  std::string before_;
  LinuxFiles files_{{data(), scratch_.path("share")}};
  LinuxShell shell_{files_};
};

TEST_F(LinuxShellTest, OpensThePageOfTheBrowserWithTheDesktopsOpener) {
  EXPECT_TRUE(execute(kBrowser, kPage));
  EXPECT_EQ(told(), "opener\n"s + kPage + "\n");
}

TEST_F(LinuxShellTest, KnowsTheBrowserWithoutAFolder) {
  EXPECT_TRUE(execute("iexplore.exe", kPage));
  EXPECT_EQ(told(), "opener\n"s + kPage + "\n");
}

TEST_F(LinuxShellTest, KnowsTheBrowserByEitherSeparatorAndInAnyCase) {
  EXPECT_TRUE(execute("/Internet Explorer/IExplore.Exe", kPage));
  EXPECT_EQ(told(), "opener\n"s + kPage + "\n");
}

TEST_F(LinuxShellTest, OpensTheFirstPageAmongTheBrowsersParameters) {
  EXPECT_TRUE(execute(kBrowser, "-nohome \"http://first.example/\" http://second.example/"));
  EXPECT_EQ(told(), "opener\nhttp://first.example/\n");
}

TEST_F(LinuxShellTest, OpensAPageInAFile) {
  EXPECT_TRUE(execute(kBrowser, "file:///usr/share/doc/a%20b.html"));
  EXPECT_EQ(told(), "opener\nfile:///usr/share/doc/a%20b.html\n");
}

// The log of the Outage monitor has a name with blanks, and nobody quotes it.
TEST_F(LinuxShellTest, OpensTheTextThatFollowsNotepadWithTheDesktopsOpener) {
  scratch_.fill("data/Files/Outage Log 07 Mar 26 0905.txt", "x");
  for (const char* notepad : {"\\notepad.exe", "C:\\Windows\\NOTEPAD.EXE", "Notepad.exe"}) {
    EXPECT_EQ(failureOf(notepad + " "s + data() + "\\Files\\Outage Log 07 Mar 26 0905.txt"), 0);
    EXPECT_EQ(told(), "opener\n" + data() + "/Files/Outage Log 07 Mar 26 0905.txt\n");
    fs::remove(folder() / "told");
  }
}

TEST_F(LinuxShellTest, OpensNoTextThatIsNotThere) {
  EXPECT_EQ(failureOf("\\notepad.exe " + data() + "\\Files\\Outage Log.txt"), 53);
  EXPECT_EQ(failureOf("\\notepad.exe"), 53);
  EXPECT_EQ(told(), "");
}

TEST_F(LinuxShellTest, OpensNoTextOnADesktopWithoutAnOpener) {
  scratch_.fill("data/Files/log.txt", "x");
  fs::remove(folder() / "bin" / "xdg-open");
  EXPECT_EQ(failureOf("\\notepad.exe " + data() + "\\Files\\log.txt"), 53);
}

class NoPageTest : public LinuxShellTest, public testing::WithParamInterface<const char*> {};

TEST_P(NoPageTest, IsNotHandedToTheOpener) {
  EXPECT_FALSE(execute(kBrowser, GetParam()));
  EXPECT_EQ(told(), "");
}

INSTANTIATE_TEST_SUITE_P(All, NoPageTest,
                         testing::Values("", " ", "www.example.org", "ftp://example.org/",
                                         "javascript:alert(1)", "/etc/passwd", "--help", "http://",
                                         "http:/example.org", "\"http://a.example/ b\"",
                                         "\"http://a.example/\nb\"", "x-http://a.example/"));

TEST_F(LinuxShellTest, OpensNoPageOnADesktopWithoutAnOpener) {
  fs::remove(folder() / "bin" / "xdg-open");
  EXPECT_FALSE(execute(kBrowser, kPage));
}

TEST_F(LinuxShellTest, OpensAnAddressInPlaceOfAFile) {
  EXPECT_TRUE(execute(kPage));
  EXPECT_EQ(told(), "opener\n"s + kPage + "\n");
}

TEST_F(LinuxShellTest, StartsAProgramBelowTheProgramFolder) {
  putTeller("data/Downloader.exe", "updater");
  EXPECT_TRUE(execute(data() + "\\Downloader.exe", "-Veltrin", data()));
  EXPECT_EQ(told(), "updater\n-Veltrin\n");
}

TEST_F(LinuxShellTest, StartsAProgramOfTheSystem) {
  putTeller("other program", "other");
  EXPECT_TRUE(execute(scratch_.path("other program")));
  EXPECT_EQ(told(), "other\n");
}

TEST_F(LinuxShellTest, StartsAProgramByItsNameInThePath) {
  putTeller("bin/editor", "editor");
  EXPECT_TRUE(execute("editor", "a.txt"));
  EXPECT_EQ(told(), "editor\na.txt\n");
}

TEST_F(LinuxShellTest, SplitsParametersByTheWindowsRulesWithoutAShell) {
  putTeller("data/a", "a");
  EXPECT_TRUE(execute(data() + "\\a", R"("a b" c\d $HOME * "x""y" ; `id`)"));
  EXPECT_EQ(told(), "a\na b\nc\\d\n$HOME\n*\nx\"y\n;\n`id`\n");
}

TEST_F(LinuxShellTest, LetsAProgramWorkInItsFolder) {
  putScript("data/a", "/bin/pwd > '" + scratch_.path("told") + "'\n");
  EXPECT_TRUE(execute(data() + "\\a", "", data() + "\\files"));
  EXPECT_EQ(told(), data() + "/Files\n");
}

TEST_F(LinuxShellTest, LetsAProgramWithoutAFolderWorkInThatOfItsStarter) {
  putScript("data/a", "/bin/pwd > '" + scratch_.path("told") + "'\n");
  EXPECT_TRUE(execute(data() + "\\a"));
  EXPECT_EQ(told(), fs::current_path().string() + "\n");
}

TEST_F(LinuxShellTest, StartsNothingInAFolderThatIsNotThere) {
  putTeller("data/a", "a");
  EXPECT_FALSE(execute(data() + "\\a", "", data() + "\\Missing"));
  EXPECT_EQ(told(), "");
}

TEST_F(LinuxShellTest, OpensADocumentBelowTheProgramFolder) {
  scratch_.fill("data/Files/Notes.txt", "text");
  EXPECT_TRUE(execute(data() + "\\files\\notes.txt"));
  EXPECT_EQ(told(), "opener\n" + data() + "/Files/Notes.txt\n");
}

TEST_F(LinuxShellTest, OpensADocumentOfTheSystem) {
  scratch_.fill("-a b.txt", "text");
  EXPECT_TRUE(execute(scratch_.path("-a b.txt")));
  EXPECT_EQ(told(), "opener\n" + scratch_.path("-a b.txt") + "\n");
}

TEST_F(LinuxShellTest, OpensAFolder) {
  EXPECT_TRUE(execute(data()));
  EXPECT_EQ(told(), "opener\n" + data() + "\n");
}

TEST_F(LinuxShellTest, OpensADocumentThatOnlyLooksLikeAProgram) {
  scratch_.fill("data/Notes.txt", "text without a first line that names a program\n");
  fs::permissions(folder() / "data" / "Notes.txt", fs::perms::owner_all);
  EXPECT_TRUE(execute(data() + "\\Notes.txt"));
  EXPECT_EQ(told(), "opener\n" + data() + "/Notes.txt\n");
}

TEST_F(LinuxShellTest, FindsNoFileThatIsNotThere) {
  for (const std::string& file :
       {data() + "\\Downloader.exe", "/no/such/file"s, "no-such-program"s, ""s}) {
    EXPECT_FALSE(execute(file, kPage)) << file;
  }
  EXPECT_EQ(told(), "");
}

TEST_F(LinuxShellTest, FindsNoFileOfTheSystemByBackslashes) {
  EXPECT_FALSE(execute("\\bin\\sh", kPage));
  EXPECT_EQ(told(), "");
}

TEST_F(LinuxShellTest, FindsNoFileWithANul) {
  putTeller("data/a", "a");
  EXPECT_FALSE(execute(data() + "\\a\0b"s));
  EXPECT_FALSE(execute(data() + "\\a", "x\0y"s));
  EXPECT_FALSE(execute(data() + "\\a", "", data() + "\0x"s));
  EXPECT_EQ(told(), "");
}

TEST_F(LinuxShellTest, TakesNoVerbForOpening) {
  EXPECT_TRUE(shell_.execute("", kBrowser, kPage, "", kShowNormal));
  EXPECT_EQ(told(), "opener\n"s + kPage + "\n");
}

TEST_F(LinuxShellTest, TakesTheVerbInAnyCase) {
  EXPECT_TRUE(shell_.execute("Open", kBrowser, kPage, "", kShowNormal));
  EXPECT_EQ(told(), "opener\n"s + kPage + "\n");
}

TEST_F(LinuxShellTest, KnowsNoOtherVerb) {
  EXPECT_FALSE(shell_.execute("print", kBrowser, kPage, "", kShowNormal));
  EXPECT_EQ(told(), "");
}

TEST_F(LinuxShellTest, DoesNotWaitForWhatItStarts) {
  putScript("data/a", "until [ -e '" + scratch_.path("go") + "' ]; do /bin/sleep 0.01; done\n" +
                          "echo late > '" + scratch_.path("told") + "'\n");
  EXPECT_TRUE(execute(data() + "\\a"));
  EXPECT_FALSE(scratch_.has("told"));
  scratch_.fill("go", "");
  EXPECT_EQ(told(), "late\n");
}

// The sixth word about a process is its session (proc_pid_stat(5)).
TEST_F(LinuxShellTest, GivesAProgramASessionOfItsOwn) {
  putScript("data/a",
            "read -r a b c d e session rest < /proc/$$/stat\n"
            "[ $session = $$ ] && echo own > '" +
                scratch_.path("told") + "'\n");
  EXPECT_TRUE(execute(data() + "\\a"));
  EXPECT_EQ(told(), "own\n");
}

TEST_F(LinuxShellTest, ShowsAProgramItsThreeDescriptorsOnly) {
  const int inheritable = open("/dev/null", O_RDONLY);  // without O_CLOEXEC
  ASSERT_GE(inheritable, 0);
  const fs::path talker = fs::read_symlink("/proc/self/exe").parent_path() / "talker";
  putScript("data/a",
            "exec '" + talker.string() + "' descriptors > '" + scratch_.path("told") + "'\n");
  EXPECT_TRUE(execute(data() + "\\a"));
  EXPECT_EQ(told(), "0 1 2 \n");
  close(inheritable);
}

TEST_F(LinuxShellTest, GivesAProgramNoInputAndNoOutput) {
  putScript("data/a",
            "files=$(/bin/readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\n"
            "printf '%s\\n' \"$files\" > '" +
                scratch_.path("told") + "'\n");
  EXPECT_TRUE(execute(data() + "\\a"));
  EXPECT_EQ(told(), "/dev/null\n/dev/null\n/dev/null\n");
}

TEST_F(LinuxShellTest, LeavesNoDescriptorOpen) {
  const auto count = [] {
    int entries = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator("/proc/self/fd")) ++entries;
    return entries;
  };
  const int before = count();
  execute(kBrowser, kPage);
  execute("no-such-program");
  EXPECT_EQ(count(), before);
}

TEST_F(LinuxShellTest, RunsAProgramWithItsArguments) {
  putTeller("data/a", "a");
  EXPECT_EQ(failureOf(data() + "\\a one \"two three\""), 0);
  EXPECT_EQ(told(), "a\none\ntwo three\n");
}

TEST_F(LinuxShellTest, RunsAProgramOfThePath) {
  putTeller("bin/editor", "editor");
  EXPECT_EQ(failureOf("editor a.txt"), 0);
  EXPECT_EQ(told(), "editor\na.txt\n");
}

TEST_F(LinuxShellTest, RunsAQuotedProgramWithBlanks) {
  putTeller("data/one two", "both");
  EXPECT_EQ(failureOf("\"" + data() + "\\one two\" three"), 0);
  EXPECT_EQ(told(), "both\nthree\n");
}

TEST_F(LinuxShellTest, RunsAProgramWithBlanksThatIsNotQuoted) {
  putTeller("data/one two  three", "all");
  EXPECT_EQ(failureOf(data() + "\\one two  three four"), 0);
  EXPECT_EQ(told(), "all\nfour\n");
}

TEST_F(LinuxShellTest, RunsTheShorterOfTwoProgramsThatALineMayName) {
  putTeller("data/one", "one");
  putTeller("data/one two", "both");
  EXPECT_EQ(failureOf(data() + "\\one two"), 0);
  EXPECT_EQ(told(), "one\ntwo\n");
}

TEST_F(LinuxShellTest, PassesOverAFolderThatALineMayName) {
  fs::create_directory(folder() / "data" / "one");
  putTeller("data/one two", "both");
  EXPECT_EQ(failureOf(data() + "\\one two"), 0);
  EXPECT_EQ(told(), "both\n");
}

TEST_F(LinuxShellTest, RunsTheBrowserOnThePageBehindIt) {
  EXPECT_EQ(failureOf(kBrowser + " "s + kPage), 0);
  EXPECT_EQ(told(), "opener\n"s + kPage + "\n");
}

TEST_F(LinuxShellTest, RunsTheBrowserBelowAFolderThatIsNotSet) {
  EXPECT_EQ(failureOf("\\Internet Explorer\\IEXPLORE.EXE "s + kPage), 0);
  EXPECT_EQ(told(), "opener\n"s + kPage + "\n");
}

TEST_F(LinuxShellTest, RunsTheQuotedBrowserOnAQuotedPage) {
  EXPECT_EQ(failureOf("\""s + kBrowser + "\" \"" + kPage + "\""), 0);
  EXPECT_EQ(told(), "opener\n"s + kPage + "\n");
}

TEST_F(LinuxShellTest, FailsToRunTheBrowserWithoutAPage) {
  EXPECT_EQ(failureOf(kBrowser), 53);
  EXPECT_EQ(told(), "");
}

TEST_F(LinuxShellTest, FailsToRunTheBrowserWithoutAnOpener) {
  fs::remove(folder() / "bin" / "xdg-open");
  EXPECT_EQ(failureOf(kBrowser + " "s + kPage), 53);
}

TEST_F(LinuxShellTest, FailsToRunWhatIsNotThere) {
  for (const char* line : {"no-such-program a b", "/no/such/program", "\"/no/such/program\" a",
                           "\"no-such-program", "\\notepad.exe \\Changes.txt", "\"\"", "   "}) {
    EXPECT_EQ(failureOf(line), 53) << line;
  }
}

TEST_F(LinuxShellTest, FailsToRunADocument) {
  scratch_.fill("data/Notes.txt", "text");
  EXPECT_EQ(failureOf(data() + "\\Notes.txt"), 53);
  EXPECT_EQ(told(), "");
}

TEST_F(LinuxShellTest, FailsToRunALineThatTheSystemWouldNotTake) {
  putTeller("bin/a", "a");
  EXPECT_EQ(failureOf(""), 5);
  EXPECT_EQ(failureOf("a \0b"s), 5);
  EXPECT_EQ(failureOf("a " + std::string(kLongestCommandLine - 1, 'x')), 5);
  EXPECT_EQ(told(), "");
}

}  // namespace
}  // namespace veltrin
