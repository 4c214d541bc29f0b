// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <string>
#include <windows.h>

#include "platform/windows/windows_environment.h"
#include "platform/windows/windows_files.h"

namespace veltrin {
namespace {

class WindowsEnvironmentTest : public testing::Test {
 protected:
  void SetUp() override { SetEnvironmentVariableW(L"VeltrinTest", L"a h\u00F6st"); }
  void TearDown() override { SetEnvironmentVariableW(L"VeltrinTest", nullptr); }
};

TEST_F(WindowsEnvironmentTest, TellsAVariable) {
  EXPECT_EQ(WindowsEnvironment().variable("VeltrinTest"), "a h\xC3\xB6st");
}

TEST_F(WindowsEnvironmentTest, ComparesNamesWithoutCase) {
  EXPECT_EQ(WindowsEnvironment().variable("VELTRINTEST"), "a h\xC3\xB6st");
}

TEST_F(WindowsEnvironmentTest, TellsALongVariable) {
  const std::wstring value(30000, L'x');
  SetEnvironmentVariableW(L"VeltrinTest", value.c_str());
  EXPECT_EQ(WindowsEnvironment().variable("VeltrinTest"), std::string(30000, 'x'));
}

TEST_F(WindowsEnvironmentTest, HasNothingUnderAMissingName) {
  EXPECT_EQ(WindowsEnvironment().variable("VeltrinTest2"), "");
  EXPECT_EQ(WindowsEnvironment().variable(""), "");
}

TEST_F(WindowsEnvironmentTest, KnowsTheFolderOfTheSystemsPrograms) {
  const std::string folder = WindowsEnvironment().systemFolder();
  EXPECT_TRUE(WindowsFiles().exists(folder + "\\cmd.exe")) << folder;
  EXPECT_NE(folder.back(), '\\');
}

TEST_F(WindowsEnvironmentTest, KnowsTheFolderOfWindows) {
  EXPECT_TRUE(WindowsFiles().exists(WindowsEnvironment().variable("windir")));
}

}  // namespace
}  // namespace veltrin
