// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <system_error>
#include <utility>
#include <windows.h>

#include "platform/portable/command_limits.h"
#include "platform/windows/code_page.h"
#include "platform/windows/windows_clock.h"
#include "platform/windows/windows_files.h"
#include "platform/windows/windows_processes.h"
#include "tests/platform/talker_pattern.h"

namespace veltrin {
namespace {

using Buffer = std::array<char, kReadGrain>;

std::string talkerLine(const std::string& actions) {
  return "\"" + WindowsFiles::executableFolder() + "\\talker.exe\" " + actions;
}

class WindowsProcessesTest : public testing::Test {
 protected:
  // Starts a child as the console runner does: the write end is closed here as
  // soon as the child has it. Returns what CreateProcess returned.
  int start(WindowsProcesses& processes, const std::string& commandLine) {
    Processes::Handle writeEnd = Processes::kNoHandle;
    EXPECT_TRUE(processes.CreatePipe(readEnd_, writeEnd));
    Processes::ProcessInformation started;
    const int result = processes.CreateProcess(commandLine, writeEnd, started);
    processes.CloseHandle(writeEnd);
    processes.CloseHandle(started.process);
    processes.CloseHandle(started.thread);
    return result;
  }

  std::string readAll(WindowsProcesses& processes) {
    std::string text;
    Buffer buffer{};
    std::size_t count = 0;
    while (processes.ReadFile(readEnd_, buffer, count)) text.append(buffer.data(), count);
    processes.CloseHandle(readEnd_);
    return text;
  }

  std::string outputOf(WindowsProcesses& processes, const std::string& commandLine) {
    if (start(processes, commandLine) != 1) {
      processes.CloseHandle(readEnd_);
      return "not started";
    }
    return readAll(processes);
  }

  std::string outputOf(const std::string& commandLine) { return outputOf(plain_, commandLine); }

  WindowsProcesses plain_;
  Processes::Handle readEnd_ = Processes::kNoHandle;
};

TEST_F(WindowsProcessesTest, RunsTheSystemsPing) {
  EXPECT_THAT(outputOf("ping 127.0.0.1 -n 1"), testing::HasSubstr("127.0.0.1"));
}

// A file that the test puts somewhere under a name of its own choice.
class PlantedProgram {
 public:
  explicit PlantedProgram(std::filesystem::path place) : place_(std::move(place)) {
    std::filesystem::copy_file(toWide(WindowsFiles::executableFolder() + "\\talker.exe"), place_,
                               std::filesystem::copy_options::overwrite_existing);
  }
  ~PlantedProgram() {
    std::error_code ignored;
    std::filesystem::remove(place_, ignored);
  }
  PlantedProgram(const PlantedProgram&) = delete;
  PlantedProgram& operator=(const PlantedProgram&) = delete;

 private:
  std::filesystem::path place_;
};

TEST_F(WindowsProcessesTest, RunsTheSystemsPingThoughAnotherLiesBesideTheProgram) {
  const PlantedProgram planted(toWide(WindowsFiles::executableFolder() + "\\ping.exe"));
  for (const char* name : {"ping", "PING", "ping.exe", "\"ping\""}) {
    EXPECT_NE(outputOf(std::string(name) + " out=planted"), "planted\n") << name;
  }
  EXPECT_THAT(outputOf("ping 127.0.0.1 -n 1"), testing::HasSubstr("127.0.0.1"));
}

// Each word that a user types is one argument, whatever a command interpreter would make of it.
TEST_F(WindowsProcessesTest, HandsTheSignsOfACommandInterpreterOnAsTheyAre) {
  EXPECT_EQ(outputOf(talkerLine("out=a&calc out=%PATH% out=x|more out=^b out=(c)>d")),
            "a&calc\n%PATH%\nx|more\n^b\n(c)>d\n");
}

TEST_F(WindowsProcessesTest, RunsTheSystemsCommandInterpreter) {
  EXPECT_EQ(outputOf("cmd /c echo hello"), "hello\r\n");
}

TEST_F(WindowsProcessesTest, GivesABlockOf256BytesInOneReadAndThenTheEnd) {
  ASSERT_EQ(start(plain_, talkerLine("bytes=256")), 1);
  Buffer buffer{};
  std::size_t count = 0;
  EXPECT_TRUE(plain_.ReadFile(readEnd_, buffer, count));
  EXPECT_EQ(count, 256U);
  EXPECT_FALSE(plain_.ReadFile(readEnd_, buffer, count));
  EXPECT_EQ(count, 0U);
  plain_.CloseHandle(readEnd_);
}

TEST_F(WindowsProcessesTest, JoinsOutputAndErrorsInTheirOrder) {
  EXPECT_EQ(outputOf(talkerLine("out=one err=two out=three err=four")), "one\ntwo\nthree\nfour\n");
}

TEST_F(WindowsProcessesTest, ReadsOnUntilAGrandchildHasEndedToo) {
  EXPECT_EQ(outputOf(talkerLine("out=child grandchild=grandchild")), "child\ngrandchild\n");
}

TEST_F(WindowsProcessesTest, LosesNothingOf2MegabytesInBursts) {
  constexpr std::uint64_t kSize = 2ULL * 1024 * 1024;
  const std::string text = outputOf(talkerLine("bursts=" + std::to_string(kSize)));
  std::uint64_t wrong = 0;
  for (std::size_t i = 0; i < text.size(); ++i) wrong += text[i] != talkerByte(i) ? 1 : 0;
  EXPECT_EQ(text.size(), kSize);
  EXPECT_EQ(wrong, 0U);
}

TEST_F(WindowsProcessesTest, GivesTheHookAnEventThatTellsOfTheEndOfTheWait) {
  int calls = 0;
  WindowsProcesses processes([&calls](void* event) {
    ++calls;
    EXPECT_EQ(WaitForSingleObject(event, 60000), WAIT_OBJECT_0);
  });
  EXPECT_EQ(outputOf(processes, talkerLine("out=child grandchild=grandchild")),
            "child\ngrandchild\n");
  EXPECT_GE(calls, 1);
}

TEST_F(WindowsProcessesTest, WaitsOnWhenTheHookReturnsEarly) {
  WindowsProcesses processes([](void*) {});
  EXPECT_EQ(outputOf(processes, talkerLine("out=one err=two")), "one\ntwo\n");
}

TEST_F(WindowsProcessesTest, DoesNotCallTheHookWhenSomethingCanBeRead) {
  WindowsProcesses processes([](void*) { ADD_FAILURE() << "called"; });
  Processes::Handle writeEnd = Processes::kNoHandle;
  ASSERT_TRUE(processes.CreatePipe(readEnd_, writeEnd));
  DWORD written = 0;
  WriteFile(reinterpret_cast<HANDLE>(writeEnd), "now", 3, &written, nullptr);
  Buffer buffer{};
  std::size_t count = 0;
  EXPECT_TRUE(processes.ReadFile(readEnd_, buffer, count));
  EXPECT_EQ(std::string(buffer.data(), count), "now");
  processes.CloseHandle(writeEnd);
  processes.CloseHandle(readEnd_);
}

TEST_F(WindowsProcessesTest, StartsNothingForAnEmptyCommandLine) {
  EXPECT_EQ(outputOf(""), "not started");
}

TEST_F(WindowsProcessesTest, StartsNothingForACommandLineWithANul) {
  using namespace std::string_literals;
  EXPECT_EQ(outputOf("cmd /c echo a\0b"s), "not started");
}

TEST_F(WindowsProcessesTest, TakesTheLongestCommandLineButNoLongerOne) {
  const std::string start = talkerLine("out=x ");
  const std::string longest = start + std::string(kLongestCommandLine - start.size(), 'y');
  EXPECT_EQ(outputOf(longest), "x\n");
  EXPECT_EQ(outputOf(longest + "y"), "not started");
}

TEST_F(WindowsProcessesTest, StartsNothingForAMissingProgram) {
  EXPECT_EQ(outputOf("no-such-program"), "not started");
}

TEST_F(WindowsProcessesTest, ReadsTheAnsiCodePageAsUtf8) {
  const std::string bytes = "M\xFCnchen";
  std::string text = bytes;
  plain_.fromCodePage(text);
  EXPECT_EQ(text, fromAnsi(bytes));
  EXPECT_NE(text, bytes);
}

TEST(WindowsClock, TellsThePresentMoment) {
  SYSTEMTIME parts{};
  GetLocalTime(&parts);
  const DateTime now = WindowsClock().now();
  EXPECT_EQ(now.year, parts.wYear);
  EXPECT_GE(now.month, 1);
  EXPECT_LE(now.second, 59);
}

TEST(WindowsClock, TellsMillisecondsOfEverySize) {
  const WindowsClock clock;
  const ULONGLONG end = GetTickCount64() + 3000;
  bool early = false;
  bool late = false;
  while (!(early && late) && GetTickCount64() < end) {
    const int millisecond = clock.now().millisecond;
    ASSERT_GE(millisecond, 0);
    ASSERT_LE(millisecond, 999);
    early = early || (millisecond > 0 && millisecond < 500);
    late = late || millisecond >= 500;
  }
  EXPECT_TRUE(early);
  EXPECT_TRUE(late);
}

TEST(WindowsClock, TellsHoursAndMinutesWithoutSeconds) {
  const std::string shown = WindowsClock().shortTime();
  EXPECT_EQ(std::count(shown.begin(), shown.end(), ':'), 1) << shown;
}

}  // namespace
}  // namespace veltrin
