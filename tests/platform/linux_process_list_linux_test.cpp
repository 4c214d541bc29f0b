// SPDX-License-Identifier: GPL-3.0-or-later
// The processes of Linux, of a made-up machine and of this one.
#include <algorithm>
#include <array>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <vector>

#include "platform/linux/linux_process_list.h"
#include "tests/machine/temporary_tree.h"

namespace veltrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

class LinuxProcessListTest : public testing::Test {
 protected:
  using Texts = std::vector<std::string>;

  // A process whose word the kernel tells to everybody.
  void addProcess(const std::string& id, const std::string& word) const {
    machine.put("/proc/" + id + "/comm", word + "\n");
  }
  void runs(const std::string& id, const std::string& program) const {
    machine.link("/proc/" + id + "/exe", program);
  }
  void startedBy(const std::string& id, const std::string& words) const {
    machine.put("/proc/" + id + "/cmdline", words);
  }
  void maps(const std::string& id, const std::string& lines) const {
    machine.put("/proc/" + id + "/maps", lines);
  }

  static Texts namesOf(ProcessList& list) {
    const auto snapshot = list.CreateToolhelp32Snapshot(kSnapshotOfProcesses, 0);
    Texts names;
    PROCESSENTRY32 entry{PROCESSENTRY32::kSize, {}};
    for (bool found = list.Process32First(snapshot, entry); found;
         found = list.Process32Next(snapshot, entry)) {
      names.push_back(entry.szExeFile);
    }
    list.CloseHandle(snapshot);
    return names;
  }

  static Texts modulesOf(ProcessList& list, std::uint32_t id) {
    const auto process = list.OpenProcess(kQueryAndRead, false, id);
    std::vector<ProcessList::Module> modules(1024);
    std::uint32_t bytes = 0;
    if (!list.EnumProcessModules(process, modules, bytes)) return {"refused"};
    Texts paths;
    for (std::uint32_t index = 0; index < bytes / kTableEntry; ++index) {
      std::string path;
      list.GetModuleFileNameExA(process, modules.at(index), path, 400);
      paths.push_back(path);
    }
    list.CloseHandle(process);
    return paths;
  }

  TemporaryTree machine;
  LinuxProcessList made{machine.files()};
  LinuxProcessList real;
};

TEST_F(LinuxProcessListTest, NamesProcessesByTheirProgramsElseByTheirWords) {
  addProcess("20", "Web Content");
  runs("20", "/usr/lib/browser/web-content");
  addProcess("3", "kthreadd");
  machine.put("/proc/version", "no process");
  EXPECT_THAT(namesOf(made), ElementsAre("kthreadd", "web-content"));
}

TEST_F(LinuxProcessListTest, NamesAProgramThatWasDeletedSinceAsBefore) {
  addProcess("20", "sshd");
  runs("20", "/usr/sbin/sshd-session (deleted)");
  EXPECT_THAT(namesOf(made), ElementsAre("sshd-session"));
}

TEST_F(LinuxProcessListTest, LeavesOutAProcessThatHasEndedMeanwhile) {
  machine.makeFolder("/proc/7");
  EXPECT_THAT(namesOf(made), IsEmpty());
}

// The kernel keeps 15 bytes of a word. Another user's program is not to be read; what it was
// started by is.
TEST_F(LinuxProcessListTest, MakesACutWordWhole) {
  addProcess("20", "systemd-journal");
  startedBy("20", "/lib/systemd/systemd-journald\0--flush\0"s);
  EXPECT_THAT(namesOf(made), ElementsAre("systemd-journald"));
}

TEST_F(LinuxProcessListTest, LeavesAWordThatItWasNotStartedBy) {
  addProcess("20", "nightly-backup-");
  startedBy("20", "/bin/sh\0/usr/bin/nightly-backup-all\0"s);
  addProcess("21", "kworker/u8:2-ev");
  startedBy("21", "");
  addProcess("22", "nginx");
  startedBy("22", "nginx: worker process");
  EXPECT_THAT(namesOf(made), ElementsAre("nightly-backup-", "kworker/u8:2-ev", "nginx"));
}

// A process may take itself its word.
TEST_F(LinuxProcessListTest, NamesAProcessWithoutAWordByWhatItWasStartedBy) {
  addProcess("20", "");
  startedBy("20", "/opt/silent/server\0-x\0"s);
  EXPECT_THAT(namesOf(made), ElementsAre("server"));
}

TEST_F(LinuxProcessListTest, ListsAProcessOfNoNameAtAll) {
  addProcess("20", "");
  addProcess("21", "next");
  EXPECT_THAT(namesOf(made), ElementsAre("", "next"));
}

TEST_F(LinuxProcessListTest, NamesAProcessInBytesThatAreNoUtf8WithQuestionMarks) {
  addProcess("20", "x");
  runs("20", "/opt/caf\xE9");
  addProcess("21", "gar\xE7on");
  EXPECT_THAT(namesOf(made), ElementsAre("caf?", "gar?on"));
}

TEST_F(LinuxProcessListTest, TakesNoRecordOfAnotherSize) {
  addProcess("3", "kthreadd");
  const auto snapshot = made.CreateToolhelp32Snapshot(kSnapshotOfProcesses, 0);
  PROCESSENTRY32 entry;
  EXPECT_FALSE(made.Process32First(snapshot, entry));
}

TEST_F(LinuxProcessListTest, TakesUpProcessesAlone) {
  EXPECT_EQ(made.CreateToolhelp32Snapshot(8, 0), ProcessList::kNoHandle);
}

TEST_F(LinuxProcessListTest, FillsATableWithTheIdsInTheirOrder) {
  for (const char* id : {"10", "9", "200"}) addProcess(id, "x");
  std::array<std::uint32_t, 2> ids{};
  std::uint32_t bytes = 0;
  ASSERT_TRUE(made.EnumProcesses(ids, bytes));
  EXPECT_THAT(ids, ElementsAre(9, 10));
  EXPECT_EQ(bytes, 8U);
}

TEST_F(LinuxProcessListTest, FailsWithoutTheProcessFileSystem) {
  LinuxProcessList none(FileTree(machine.real("/none")));
  std::array<std::uint32_t, 2> ids{};
  std::uint32_t bytes = 5;
  EXPECT_FALSE(none.EnumProcesses(ids, bytes));
  EXPECT_EQ(bytes, 5U);
  EXPECT_THAT(namesOf(none), IsEmpty());
}

TEST_F(LinuxProcessListTest, TellsFilesOfMappedCodeOnceAndTheProgramFirst) {
  addProcess("5", "x");
  runs("5", "/usr/bin/x y");
  maps("5",
       "0010-0020 r--p 00000000 08:01 11                         /usr/lib/libz.so\n"
       "0020-0030 r--p 00000000 08:01 12                         /usr/bin/x y\n"
       "0030-0040 rw-p 00000000 00:00 0                          [heap]\n"
       "0040-0050 rw-p 00000000 00:00 0 \n"
       "0050-0060 r-xp 00001000 08:01 11                         /usr/lib/libz.so\n"
       "0060-0070 rw-p 00000000 00:00 0                          [anon:a/b]\n"
       "0070-0080 r--p 00000000 08:01 13                         /usr/share/fonts/x.ttf\n"
       "0080-0090 r-xp 00000000 08:01 14                         /a (deleted)\n");
  EXPECT_THAT(modulesOf(made, 5), ElementsAre("/usr/bin/x y", "/usr/lib/libz.so", "/a"));
}

TEST_F(LinuxProcessListTest, AProcessOfTheKernelHasNoModules) {
  addProcess("3", "kthreadd");
  maps("3", "");
  EXPECT_THAT(modulesOf(made, 3), IsEmpty());
}

TEST_F(LinuxProcessListTest, AProcessWhoseMapsAreNotToBeReadRefuses) {
  addProcess("3", "x");
  EXPECT_EQ(made.OpenProcess(kQueryAndRead, false, 3), ProcessList::kNoHandle);
  EXPECT_THAT(modulesOf(made, 3), ElementsAre("refused"));
}

TEST_F(LinuxProcessListTest, TellsHowManyModulesThereAreBeyondATable) {
  addProcess("3", "x");
  maps("3", "0-1 r-xp 0 0:0 1 /a\n1-2 r-xp 0 0:0 2 /b\n2-3 r-xp 0 0:0 3 /c\n");
  const auto process = made.OpenProcess(kQueryAndRead, false, 3);
  std::array<ProcessList::Module, 2> modules{};
  std::uint32_t bytes = 0;
  ASSERT_TRUE(made.EnumProcessModules(process, modules, bytes));
  EXPECT_EQ(bytes, 12U);
}

TEST_F(LinuxProcessListTest, TellsModulesOfNoUtf8WithQuestionMarks) {
  addProcess("5", "x");
  runs("5", "/opt/caf\xE9/x");
  maps("5",
       "0-1 r-xp 0 0:0 1 /opt/caf\xE9/x\n1-2 r-xp 0 0:0 2 /opt/\xFF\xFE.so\n"
       "2-3 r-xp 0 0:0 3 /opt/\xC3\xA9.so\n");
  EXPECT_THAT(modulesOf(made, 5), ElementsAre("/opt/caf?/x", "/opt/\?\?.so", "/opt/\xC3\xA9.so"));
}

// A browser has maps of megabytes.
TEST_F(LinuxProcessListTest, ReadsMapsOfAnyLength) {
  addProcess("5", "x");
  std::string lines;
  for (int i = 0; lines.size() < std::size_t{5} << 20; ++i) {
    lines += "7f0000000000-7f0000001000 rw-p 00000000 00:00 0 \n";
  }
  maps("5", lines + "8-9 r-xp 0 0:0 3 /usr/lib/last.so\n");
  EXPECT_THAT(modulesOf(made, 5), ElementsAre("/usr/lib/last.so"));
}

// It stands in the table still, and refuses to be opened.
TEST_F(LinuxProcessListTest, AProcessThatEndsBehindTheListingRefuses) {
  addProcess("5", "x");
  maps("5", "0-1 r-xp 0 0:0 1 /a\n");
  std::array<std::uint32_t, 2> ids{};
  std::uint32_t bytes = 0;
  ASSERT_TRUE(made.EnumProcesses(ids, bytes));
  ASSERT_EQ(bytes, 4U);
  std::filesystem::remove_all(machine.real("/proc/5"));
  EXPECT_THAT(modulesOf(made, ids[0]), ElementsAre("refused"));
}

// The snapshot is of the moment at which it was taken.
TEST_F(LinuxProcessListTest, AProcessThatEndsBehindTheSnapshotStandsInIt) {
  addProcess("5", "x");
  const auto snapshot = made.CreateToolhelp32Snapshot(kSnapshotOfProcesses, 0);
  std::filesystem::remove_all(machine.real("/proc/5"));
  PROCESSENTRY32 entry{PROCESSENTRY32::kSize, {}};
  EXPECT_TRUE(made.Process32First(snapshot, entry));
  EXPECT_EQ(entry.szExeFile, "x");
}

TEST_F(LinuxProcessListTest, TellsTheNameOfAModule) {
  addProcess("3", "x");
  maps("3", "0-1 r-xp 0 0:0 1 /usr/lib/libz.so\n");
  const auto process = made.OpenProcess(kQueryAndRead, false, 3);
  std::string name = "unknown";
  EXPECT_EQ(made.GetModuleBaseNameA(process, 1, name, 400), 7U);
  EXPECT_EQ(name, "libz.so");
  EXPECT_EQ(made.GetModuleFileNameExA(process, 1, name, 8), 8U);
  EXPECT_EQ(name, "/usr/lib");
}

TEST_F(LinuxProcessListTest, LeavesTheNameOfWhatIsNoModule) {
  addProcess("3", "x");
  maps("3", "");
  const auto process = made.OpenProcess(kQueryAndRead, false, 3);
  std::string name = "unknown";
  for (const ProcessList::Module module : {-1, 0, 1}) {
    EXPECT_EQ(made.GetModuleBaseNameA(process, module, name, 400), 0U);
    EXPECT_EQ(made.GetModuleFileNameExA(process, module, name, 400), 0U);
  }
  EXPECT_EQ(name, "unknown");
}

TEST_F(LinuxProcessListTest, AClosedHandleIsNoneAnyMore) {
  addProcess("3", "x");
  maps("3", "");
  const auto process = made.OpenProcess(kQueryAndRead, false, 3);
  made.CloseHandle(process);
  std::uint32_t bytes = 0;
  EXPECT_FALSE(made.EnumProcessModules(process, {}, bytes));
}

TEST_F(LinuxProcessListTest, FindsThisProgramAndItsLibrary) {
  const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
  EXPECT_THAT(namesOf(real), Contains(program.substr(program.rfind('/') + 1)));
  std::vector<std::uint32_t> ids(100'000);
  std::uint32_t bytes = 0;
  ASSERT_TRUE(real.EnumProcesses(ids, bytes));
  ids.resize(bytes / kTableEntry);
  EXPECT_THAT(ids, Contains(static_cast<std::uint32_t>(getpid())));
  const Texts modules = modulesOf(real, static_cast<std::uint32_t>(getpid()));
  EXPECT_EQ(modules.front(), program);
  EXPECT_TRUE(std::any_of(modules.begin(), modules.end(), [](const std::string& path) {
    return path.find("/libc.so") != std::string::npos;
  }));
  EXPECT_EQ(std::count(modules.begin(), modules.end(), program), 1);
}

}  // namespace
}  // namespace veltrin
