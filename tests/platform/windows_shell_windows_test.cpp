// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <windows.h>

#include "platform/portable/command_limits.h"
#include "platform/windows/code_page.h"
#include "platform/windows/windows_files.h"
#include "platform/windows/windows_shell.h"
#include "tests/platform/scratch_folder.h"
#include "text/statement.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

// Programs that are started write down what they were given.
class WindowsShellTest : public testing::Test {
 protected:
  static std::string talker() { return WindowsFiles::executableFolder() + "\\talker.exe"; }

  // The talker under another name, or in another folder.
  std::string talkerNamed(const std::string& name) const {
    const fs::path copy = scratch_.folder() / fs::path(toWide(name));
    fs::create_directories(copy.parent_path());
    fs::copy_file(toWide(talker()), copy);
    return fromWide(copy.wstring());
  }

  std::string toFile() const { return "\"file=" + scratch_.path("told") + "\" "; }

  // What a program has told; never nothing. Waits for it, ten seconds at most: for a moment
  // the file has its name already and cannot be read, as who renames it still holds it.
  std::string told() const {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    std::string text = scratch_.content("told");
    while (text.empty() && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
      text = scratch_.content("told");
    }
    return text;
  }

  bool execute(const std::string& file, const std::string& parameters,
               const std::string& folder = {}) {
    return shell_.execute("open", file, parameters, folder, kShowNormal);
  }

  // Number of the failure of a command line, whose words are kept; 0 when it does not fail.
  int failureOf(const std::string& commandLine) {
    words_.clear();
    try {
      shell_.run(commandLine, kShowMaximized);
      return 0;
    } catch (const StatementFailed& failure) {
      words_ = failure.what();
      return failure.number();
    }
  }

  ScratchFolder scratch_;
  WindowsShell shell_;
  std::string words_;
};

TEST_F(WindowsShellTest, StartsAProgramWithItsParameters) {
  EXPECT_TRUE(execute(talker(), toFile() + "out=one \"out=two three\""));
  EXPECT_EQ(told(), "one\ntwo three\n");
}

TEST_F(WindowsShellTest, LetsAProgramWorkInItsFolder) {
  EXPECT_TRUE(execute(talker(), toFile() + "folder", scratch_.folder().string()));
  EXPECT_EQ(told(), scratch_.folder().string() + "\n");
}

TEST_F(WindowsShellTest, StartsAProgramWithALetterOfTheCodePageInItsPath) {
  EXPECT_TRUE(execute(talkerNamed("h\xC3\xB6st\\talker.exe"), toFile() + "out=x"));
  EXPECT_EQ(told(), "x\n");
}

TEST_F(WindowsShellTest, TakesNoVerbForTheUsualOne) {
  EXPECT_TRUE(shell_.execute("", talker(), toFile() + "out=x", "", kShowNormal));
  EXPECT_EQ(told(), "x\n");
}

TEST_F(WindowsShellTest, FindsNoFileThatIsNotThere) {
  EXPECT_FALSE(execute(scratch_.path("Downloader.exe"), "-Veltrin"));
  EXPECT_FALSE(execute("\\Internet Explorer\\IEXPLORE.EXE", "http://www.example.org/"));
}

TEST_F(WindowsShellTest, FindsNoFileWithANul) {
  EXPECT_FALSE(execute(talker() + "\0x"s, toFile() + "out=x"));
  EXPECT_FALSE(execute(talker(), toFile() + "out=x\0y"s));
  EXPECT_FALSE(scratch_.has("told"));
}

TEST_F(WindowsShellTest, RunsAProgramWithItsArguments) {
  EXPECT_EQ(failureOf("\"" + talker() + "\" " + toFile() + "out=x"), 0) << words_;
  EXPECT_EQ(told(), "x\n");
}

TEST_F(WindowsShellTest, RunsAProgramWithBlanksThatIsNotQuoted) {
  EXPECT_EQ(failureOf(talkerNamed("one two\\talker three.exe") + " " + toFile() + "out=x"), 0)
      << words_;
  EXPECT_EQ(told(), "x\n");
}

TEST_F(WindowsShellTest, FailsToRunWhatIsNotThere) {
  EXPECT_EQ(failureOf("no-such-program a b"), 53);
  EXPECT_EQ(words_, "The program cannot be started (error 2): no-such-program a b");
  EXPECT_EQ(failureOf("\"C:\\no such folder\\program.exe\" a"), 53);
  EXPECT_EQ(failureOf("\\Internet Explorer\\IEXPLORE.EXE http://www.example.org/"), 53);
}

TEST_F(WindowsShellTest, FailsToRunWhatIsNoProgram) {
  scratch_.fill("program.exe", "text");
  EXPECT_EQ(failureOf("\"" + scratch_.path("program.exe") + "\""), 5);
}

TEST_F(WindowsShellTest, FailsToRunALineThatTheSystemWouldNotTake) {
  EXPECT_EQ(failureOf(""), 5);
  EXPECT_EQ(failureOf("cmd.exe\0x"s), 5);
  EXPECT_EQ(failureOf("cmd.exe " + std::string(kLongestCommandLine, 'x')), 5);
}

}  // namespace
}  // namespace veltrin
