// SPDX-License-Identifier: GPL-3.0-or-later
// The processes of Windows, as this program finds itself among them.
#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <windows.h>

#include "platform/windows/code_page.h"
#include "platform/windows/windows_process_list.h"
#include "text/strings.h"

namespace veltrin {
namespace {

using testing::Contains;

class WindowsProcessListTest : public testing::Test {
 protected:
  static std::string thisProgram() {
    std::array<wchar_t, 1000> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return fromWide(path.data());
  }
  static std::string nameOf(const std::string& path) { return path.substr(path.rfind('\\') + 1); }

  WindowsProcessList list;
};

TEST_F(WindowsProcessListTest, FindsThisProgramInASnapshot) {
  const auto snapshot = list.CreateToolhelp32Snapshot(kSnapshotOfProcesses, 0);
  ASSERT_NE(snapshot, ProcessList::kNoHandle);
  std::vector<std::string> names;
  PROCESSENTRY32 entry{PROCESSENTRY32::kSize, {}};
  for (bool found = list.Process32First(snapshot, entry); found;
       found = list.Process32Next(snapshot, entry)) {
    names.push_back(entry.szExeFile);
  }
  list.CloseHandle(snapshot);
  EXPECT_THAT(names, Contains(nameOf(thisProgram())));
}

TEST_F(WindowsProcessListTest, TakesNoRecordOfAnotherSize) {
  const auto snapshot = list.CreateToolhelp32Snapshot(kSnapshotOfProcesses, 0);
  PROCESSENTRY32 entry;
  EXPECT_FALSE(list.Process32First(snapshot, entry));
  list.CloseHandle(snapshot);
}

TEST_F(WindowsProcessListTest, FindsThisProcessAmongTheIds) {
  std::vector<std::uint32_t> ids(10'000);
  std::uint32_t bytes = 0;
  ASSERT_TRUE(list.EnumProcesses(ids, bytes));
  ids.resize(bytes / kTableEntry);
  EXPECT_THAT(ids, Contains(GetCurrentProcessId()));
}

TEST_F(WindowsProcessListTest, TellsThisProgramFirstAndItsLibraries) {
  const auto process = list.OpenProcess(kQueryAndRead, false, GetCurrentProcessId());
  ASSERT_NE(process, ProcessList::kNoHandle);
  std::vector<ProcessList::Module> modules(1024);
  std::uint32_t bytes = 0;
  ASSERT_TRUE(list.EnumProcessModules(process, modules, bytes));
  modules.resize(bytes / kTableEntry);
  std::string path;
  list.GetModuleFileNameExA(process, modules.at(0), path, 400);
  EXPECT_EQ(path, thisProgram());
  std::vector<std::string> names;
  for (const auto module : modules) {
    std::string name = "unknown";
    const std::uint32_t length = list.GetModuleBaseNameA(process, module, name, 400);
    EXPECT_EQ(length, static_cast<std::uint32_t>(Len(name)));
    names.push_back(LCase(name));
  }
  EXPECT_THAT(names, Contains("kernel32.dll"));
  list.CloseHandle(process);
}

TEST_F(WindowsProcessListTest, TellsHowManyModulesThereAreBeyondATable) {
  const auto process = list.OpenProcess(kQueryAndRead, false, GetCurrentProcessId());
  std::array<ProcessList::Module, 1> one{};
  std::uint32_t bytes = 0;
  ASSERT_TRUE(list.EnumProcessModules(process, one, bytes));
  EXPECT_GT(bytes, 2 * kTableEntry);
  list.CloseHandle(process);
}

TEST_F(WindowsProcessListTest, RefusesAProcessThatIsNotThere) {
  EXPECT_EQ(list.OpenProcess(kQueryAndRead, false, 0x7FFFFFF0), ProcessList::kNoHandle);
  std::array<ProcessList::Module, 1> one{};
  std::uint32_t bytes = 5;
  EXPECT_FALSE(list.EnumProcessModules(ProcessList::kNoHandle, one, bytes));
  EXPECT_EQ(bytes, 5U);
}

TEST_F(WindowsProcessListTest, LeavesTheNameOfWhatIsNoProcess) {
  std::string name = "unknown";
  EXPECT_EQ(list.GetModuleBaseNameA(ProcessList::kNoHandle, 0, name, 400), 0U);
  EXPECT_EQ(list.GetModuleFileNameExA(ProcessList::kNoHandle, 0, name, 400), 0U);
  EXPECT_EQ(name, "unknown");
}

}  // namespace
}  // namespace veltrin
