// SPDX-License-Identifier: GPL-3.0-or-later
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "platform/linux/linux_processes.h"
#include "platform/portable/command_limits.h"
#include "tests/platform/children.h"
#include "tests/platform/talker_pattern.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;
using Buffer = std::array<char, kReadGrain>;

const std::string& talker() {
  static const std::string path = fs::read_symlink("/proc/self/exe").parent_path() / "talker";
  return path;
}

std::string talkerLine(const std::string& actions) { return "\"" + talker() + "\" " + actions; }

int countOpenDescriptors() {
  int count = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator("/proc/self/fd")) ++count;
  return count;
}

class LinuxProcessesTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = fs::temp_directory_path() / "veltrin-processes-XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    tools_ = pattern;
  }

  void TearDown() override {
    EXPECT_TRUE(noChildRemains());
    fs::remove_all(tools_);
  }

  // Starts a child as the console runner does: the write end is closed here as
  // soon as the child has it. Returns what CreateProcess returned.
  int start(const std::string& commandLine) {
    Processes::Handle writeEnd = Processes::kNoHandle;
    EXPECT_TRUE(processes_.CreatePipe(readEnd_, writeEnd));
    Processes::ProcessInformation started;
    const int result = processes_.CreateProcess(commandLine, writeEnd, started);
    processes_.CloseHandle(writeEnd);
    processes_.CloseHandle(started.process);
    processes_.CloseHandle(started.thread);
    return result;
  }

  std::string readAll() {
    std::string text;
    Buffer buffer{};
    std::size_t count = 0;
    while (processes_.ReadFile(readEnd_, buffer, count)) text.append(buffer.data(), count);
    processes_.CloseHandle(readEnd_);
    return text;
  }

  // What a child prints; a sentence when it cannot be started.
  std::string outputOf(const std::string& commandLine) {
    if (start(commandLine) != 1) {
      processes_.CloseHandle(readEnd_);
      return "not started";
    }
    return readAll();
  }

  void putScript(const std::string& name, const std::string& text, fs::perms permissions) {
    const fs::path path = tools_ / name;
    std::ofstream(path) << "#!/bin/sh\n" << text;
    fs::permissions(path, permissions);
  }

  void putTool(const std::string& name) {
    putScript(name, "echo tool " + name + " \"$@\"\n", fs::perms::owner_all);
  }

  fs::path tools_;
  LinuxProcesses processes_{std::string()};
  Processes::Handle readEnd_ = Processes::kNoHandle;
};

// Each word that a user types is one argument, whatever a shell would make of it.
TEST_F(LinuxProcessesTest, HandsTheSignsOfAShellOnAsTheyAre) {
  const fs::path trace = tools_ / "trace";
  const std::string touch = "out=a;touch${IFS}" + trace.string();
  EXPECT_EQ(outputOf(talkerLine(touch + " out=$(id) out=`id` out=x|id out=x&&id out=* out=~ out=>" +
                                trace.string())),
            touch.substr(4) + "\n$(id)\n`id`\nx|id\nx&&id\n*\n~\n>" + trace.string() + "\n");
  EXPECT_FALSE(fs::exists(trace));
}

// A folder that PATH does not name from the root is whatever folder the program was started in.
TEST_F(LinuxProcessesTest, RunsNothingOfTheCurrentFolder) {
  const fs::path before = fs::current_path();
  const std::string usual = std::getenv("PATH");
  fs::copy_file(talker(), tools_ / "planted");
  fs::current_path(tools_);
  for (const char* path : {".", "", ":", "/nowhere:", ":/nowhere", "../"}) {
    setenv("PATH", path, 1);
    EXPECT_EQ(start("planted out=x"), 0) << path;
    processes_.CloseHandle(readEnd_);
  }
  setenv("PATH", tools_.c_str(), 1);
  EXPECT_EQ(outputOf("planted out=x"), "x\n");
  setenv("PATH", usual.c_str(), 1);
  fs::current_path(before);
}

TEST_F(LinuxProcessesTest, GivesABlockOf256BytesInOneReadAndThenTheEnd) {
  ASSERT_EQ(start(talkerLine("bytes=256")), 1);
  Buffer buffer{};
  std::size_t count = 0;
  EXPECT_TRUE(processes_.ReadFile(readEnd_, buffer, count));
  EXPECT_EQ(count, 256U);
  EXPECT_FALSE(processes_.ReadFile(readEnd_, buffer, count));
  EXPECT_EQ(count, 0U);
  processes_.CloseHandle(readEnd_);
}

TEST_F(LinuxProcessesTest, ReadsNothingFromAPipeThatIsNone) {
  Buffer buffer{};
  std::size_t count = 7;
  EXPECT_FALSE(processes_.ReadFile(Processes::kNoHandle, buffer, count));
  EXPECT_EQ(count, 0U);
}

TEST_F(LinuxProcessesTest, JoinsOutputAndErrorsInTheirOrder) {
  EXPECT_EQ(outputOf(talkerLine("out=one err=two out=three err=four")), "one\ntwo\nthree\nfour\n");
}

TEST_F(LinuxProcessesTest, ReadsOnUntilAGrandchildHasEndedToo) {
  EXPECT_EQ(outputOf(talkerLine("out=child grandchild=grandchild")), "child\ngrandchild\n");
}

TEST_F(LinuxProcessesTest, LosesNothingOf100MegabytesInBursts) {
  constexpr std::uint64_t kSize = 100ULL * 1024 * 1024;
  ASSERT_EQ(start(talkerLine("bursts=" + std::to_string(kSize))), 1);
  Buffer buffer{};
  std::uint64_t position = 0;
  std::uint64_t wrong = 0;
  for (std::size_t count = 0; processes_.ReadFile(readEnd_, buffer, count);) {
    for (std::size_t i = 0; i < count; ++i) wrong += buffer[i] != talkerByte(position++) ? 1 : 0;
  }
  processes_.CloseHandle(readEnd_);
  EXPECT_EQ(position, kSize);
  EXPECT_EQ(wrong, 0U);
}

TEST_F(LinuxProcessesTest, CallsTheHookOnlyWhileThePipeIsEmpty) {
  int calls = 0;
  LinuxProcesses processes({}, [&calls](int fd) {
    pollfd entry{fd, POLLIN, 0};
    EXPECT_EQ(poll(&entry, 1, 0), 0) << "there was something to read";
    ++calls;
    poll(&entry, 1, -1);
  });
  Processes::Handle readEnd = 0;
  Processes::Handle writeEnd = 0;
  ASSERT_TRUE(processes.CreatePipe(readEnd, writeEnd));
  Processes::ProcessInformation started;
  ASSERT_EQ(processes.CreateProcess(talkerLine("sleep=20 out=late"), writeEnd, started), 1);
  processes.CloseHandle(writeEnd);
  Buffer buffer{};
  std::size_t count = 0;
  EXPECT_TRUE(processes.ReadFile(readEnd, buffer, count));
  EXPECT_EQ(std::string(buffer.data(), count), "late\n");
  EXPECT_EQ(calls, 1);
  processes.CloseHandle(readEnd);
}

TEST_F(LinuxProcessesTest, DoesNotCallTheHookWhenSomethingCanBeRead) {
  LinuxProcesses processes({}, [](int) { ADD_FAILURE() << "called"; });
  Processes::Handle readEnd = 0;
  Processes::Handle writeEnd = 0;
  ASSERT_TRUE(processes.CreatePipe(readEnd, writeEnd));
  ASSERT_EQ(write(static_cast<int>(writeEnd), "now", 3), 3);
  Buffer buffer{};
  std::size_t count = 0;
  EXPECT_TRUE(processes.ReadFile(readEnd, buffer, count));
  EXPECT_EQ(count, 3U);
  processes.CloseHandle(writeEnd);
  processes.CloseHandle(readEnd);
}

TEST_F(LinuxProcessesTest, AsksAgainWhenTheHookReturnsEarly) {
  int calls = 0;
  Processes::Handle readEnd = 0;
  Processes::Handle writeEnd = 0;
  LinuxProcesses processes({}, [&](int) {
    if (++calls < 3) return;
    EXPECT_EQ(write(static_cast<int>(writeEnd), "x", 1), 1);
  });
  ASSERT_TRUE(processes.CreatePipe(readEnd, writeEnd));
  Buffer buffer{};
  std::size_t count = 0;
  EXPECT_TRUE(processes.ReadFile(readEnd, buffer, count));
  EXPECT_EQ(count, 1U);
  EXPECT_EQ(calls, 3);
  processes.CloseHandle(writeEnd);
  processes.CloseHandle(readEnd);
}

TEST_F(LinuxProcessesTest, LeavesNoZombieBehind50Children) {
  for (int i = 0; i < 50; ++i) ASSERT_EQ(outputOf(talkerLine("out=x")), "x\n");
  EXPECT_TRUE(noChildRemains());
}

TEST_F(LinuxProcessesTest, LeavesOtherChildrenToThoseWhoWaitForThem) {
  const pid_t other = fork();
  if (other == 0) _exit(7);
  ASSERT_EQ(outputOf(talkerLine("out=x")), "x\n");
  int status = 0;
  EXPECT_EQ(waitpid(other, &status, 0), other);
  EXPECT_EQ(WEXITSTATUS(status), 7);
}

TEST_F(LinuxProcessesTest, LeavesNoDescriptorOpenAfterARun) {
  const int before = countOpenDescriptors();
  outputOf(talkerLine("out=x"));
  outputOf("no-such-program");
  EXPECT_EQ(countOpenDescriptors(), before);
}

TEST_F(LinuxProcessesTest, ShowsAChildItsThreeDescriptorsOnly) {
  const int inheritable = open("/dev/null", O_RDONLY);  // without O_CLOEXEC
  ASSERT_GE(inheritable, 0);
  EXPECT_EQ(outputOf(talkerLine("descriptors")), "0 1 2 \n");
  close(inheritable);
}

TEST_F(LinuxProcessesTest, GivesAChildAnEmptyStandardInput) {
  EXPECT_EQ(outputOf(talkerLine("stdin")), "0\n");
}

TEST_F(LinuxProcessesTest, StartsAChildWithFreshSignals) {
  sigset_t wanted;
  sigset_t before;
  sigemptyset(&wanted);
  sigaddset(&wanted, SIGUSR1);
  pthread_sigmask(SIG_BLOCK, &wanted, &before);
  const auto handler = signal(SIGINT, SIG_IGN);
  EXPECT_EQ(outputOf(talkerLine("signals")), "blocked:\nignored:\n");
  signal(SIGINT, handler);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST_F(LinuxProcessesTest, LeavesTheCallersSignalMaskAsItWas) {
  sigset_t before;
  sigset_t after;
  pthread_sigmask(SIG_SETMASK, nullptr, &before);
  outputOf(talkerLine("out=x"));
  pthread_sigmask(SIG_SETMASK, nullptr, &after);
  for (int number = 1; number < NSIG; ++number) {
    EXPECT_EQ(sigismember(&after, number), sigismember(&before, number)) << number;
  }
}

TEST_F(LinuxProcessesTest, SplitsTheCommandLineByTheWindowsRulesWithoutAShell) {
  EXPECT_EQ(outputOf(talkerLine(R"("a b" c\d $HOME * "x""y" ; arguments)")),
            talker() + "\na b\nc\\d\n$HOME\n*\nx\"y\n;\narguments\n");
}

TEST_F(LinuxProcessesTest, FindsAProgramInThePath) { EXPECT_EQ(outputOf("echo hello"), "hello\n"); }

TEST_F(LinuxProcessesTest, StartsNothingForAnEmptyCommandLine) {
  EXPECT_EQ(outputOf(""), "not started");
  EXPECT_EQ(outputOf("   "), "not started");
  EXPECT_EQ(outputOf("\"\""), "not started");
}

TEST_F(LinuxProcessesTest, StartsNothingForACommandLineWithANul) {
  using namespace std::string_literals;
  EXPECT_EQ(outputOf("echo a\0b"s), "not started");
}

TEST_F(LinuxProcessesTest, StartsNothingForACommandLineOf64Kilobytes) {
  EXPECT_EQ(outputOf("echo " + std::string(65536, 'x')), "not started");
}

TEST_F(LinuxProcessesTest, TakesTheLongestCommandLineButNoLongerOne) {
  const std::string longest = "echo " + std::string(kLongestCommandLine - 5, 'x');
  EXPECT_EQ(outputOf(longest), longest.substr(5) + "\n");
  EXPECT_EQ(outputOf(longest + "x"), "not started");
}

TEST_F(LinuxProcessesTest, CountsTheCharactersOfACommandLine) {
  std::string echoed;
  while (echoed.size() < 2 * (kLongestCommandLine - 5)) echoed += "\u00E9";
  EXPECT_EQ(outputOf("echo " + echoed), echoed + "\n");
  EXPECT_EQ(outputOf("echo " + echoed + "x"), "not started");
}

TEST_F(LinuxProcessesTest, StartsNothingForAMissingProgram) {
  EXPECT_EQ(outputOf("no-such-program"), "not started");
  EXPECT_EQ(outputOf("/no/such/program"), "not started");
}

TEST_F(LinuxProcessesTest, StartsNothingForAFolder) { EXPECT_EQ(outputOf("/usr"), "not started"); }

TEST_F(LinuxProcessesTest, StartsNothingForAFileThatIsNotExecutable) {
  putScript("plain", "echo never\n", fs::perms::owner_read);
  EXPECT_EQ(outputOf((tools_ / "plain").string()), "not started");
}

TEST_F(LinuxProcessesTest, StartsNothingForAnExecutableFileThatIsNoProgram) {
  std::ofstream(tools_ / "junk") << "\x01\x02 junk";
  fs::permissions(tools_ / "junk", fs::perms::owner_all);
  EXPECT_EQ(outputOf((tools_ / "junk").string()), "not started");
}

TEST_F(LinuxProcessesTest, MakesNoPipeWhenNoDescriptorIsLeft) {
  // The sanitizer looks at the object's type once, and takes a descriptor for it.
  Processes::Handle before = Processes::kNoHandle;
  Processes::Handle behind = Processes::kNoHandle;
  ASSERT_TRUE(processes_.CreatePipe(before, behind));
  processes_.CloseHandle(before);
  processes_.CloseHandle(behind);
  const pid_t child = fork();
  if (child == 0) {
    const int free = open("/dev/null", O_RDONLY);
    close(free);
    const auto limit = static_cast<rlim_t>(free) + 1;  // one is left, a pipe needs two
    const rlimit limits{limit, limit};
    setrlimit(RLIMIT_NOFILE, &limits);
    Processes::Handle readEnd = -5;
    Processes::Handle writeEnd = -5;
    const bool made = processes_.CreatePipe(readEnd, writeEnd);
    _exit(!made && readEnd == -5 && writeEnd == -5 ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(LinuxProcessesTest, KeepsItsPipesAboveTheStandardDescriptors) {
  const pid_t child = fork();
  if (child == 0) {
    close(0);
    close(1);
    Processes::Handle readEnd = 0;
    Processes::Handle writeEnd = 0;
    const bool made = processes_.CreatePipe(readEnd, writeEnd);
    _exit(made && readEnd > 2 && writeEnd > 2 ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

class ConsoleToolsTest : public LinuxProcessesTest {
 protected:
  void SetUp() override {
    LinuxProcessesTest::SetUp();
    processes_ = LinuxProcesses(tools_);
  }
};

TEST_F(ConsoleToolsTest, StandInForTheFiveKnownNames) {
  for (const std::string name : {"ping", "tracert", "pathping", "systeminfo", "fsutil"}) {
    putTool(name);
    EXPECT_EQ(outputOf(name + " -n 1"), "tool " + name + " -n 1\n");
  }
}

TEST_F(ConsoleToolsTest, AreKnownInAnyCaseWithFolderAndExtension) {
  putTool("systeminfo");
  for (const std::string name :
       {"Systeminfo.exe", "SYSTEMINFO", R"(C:\WINDOWS\system32\Systeminfo.EXE)",
        R"("C:\Program Files\systeminfo")", "/usr/bin/systeminfo", "c:systeminfo"}) {
    EXPECT_EQ(outputOf(name + " x"), "tool systeminfo x\n") << name;
  }
}

TEST_F(ConsoleToolsTest, AreNotReplacedByAnotherProgramOfThatName) {
  EXPECT_EQ(processes_.findProgram("ping"), "");
  EXPECT_EQ(processes_.findProgram("/bin/ping"), "");
}

TEST_F(ConsoleToolsTest, AreNotMeantByLongerNames) {
  putTool("ping");
  for (const std::string name : {"ping.exe.exe", "ping.com", "pinger", ".exe", "xping"}) {
    EXPECT_EQ(processes_.findProgram(name), "") << name;
  }
}

TEST_F(ConsoleToolsTest, DoNotHideOtherProgramsOfThePath) {
  EXPECT_THAT(processes_.findProgram("sh"), testing::EndsWith("/sh"));
}

}  // namespace
}  // namespace veltrin
