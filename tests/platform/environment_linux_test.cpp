// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cctype>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "platform/linux/linux_environment.h"

namespace veltrin {
namespace {

class LinuxEnvironmentTest : public testing::Test {
 protected:
  void SetUp() override { setenv("VELTRIN_TEST", "a value", 1); }
  void TearDown() override { unsetenv("VELTRIN_TEST"); }
};

TEST_F(LinuxEnvironmentTest, TellsAVariable) {
  EXPECT_EQ(LinuxEnvironment().variable("VELTRIN_TEST"), "a value");
}

TEST_F(LinuxEnvironmentTest, ComparesNamesWithTheirCase) {
  EXPECT_EQ(LinuxEnvironment().variable("veltrin_test"), "");
}

TEST_F(LinuxEnvironmentTest, HasNothingUnderAMissingName) {
  EXPECT_EQ(LinuxEnvironment().variable("VELTRIN_TEST_2"), "");
  EXPECT_EQ(LinuxEnvironment().variable(""), "");
}

TEST_F(LinuxEnvironmentTest, TellsHowManyProcessorsThereAre) {
  unsetenv("NUMBER_OF_PROCESSORS");
  EXPECT_EQ(LinuxEnvironment().variable("NUMBER_OF_PROCESSORS"),
            std::to_string(sysconf(_SC_NPROCESSORS_ONLN)));
}

TEST_F(LinuxEnvironmentTest, TellsTheHostsNameInUpperCase) {
  unsetenv("Computername");
  std::array<char, 256> host{};
  ASSERT_EQ(gethostname(host.data(), host.size() - 1), 0);
  std::string name = host.data();
  name = name.substr(0, name.find('.'));
  for (char& letter : name) letter = static_cast<char>(std::toupper(letter));
  EXPECT_EQ(LinuxEnvironment().variable("Computername"), name);
}

TEST_F(LinuxEnvironmentTest, KeepsWhatIsSet) {
  setenv("NUMBER_OF_PROCESSORS", "17", 1);
  setenv("Computername", "Desk", 1);
  EXPECT_EQ(LinuxEnvironment().variable("NUMBER_OF_PROCESSORS"), "17");
  EXPECT_EQ(LinuxEnvironment().variable("Computername"), "Desk");
  unsetenv("NUMBER_OF_PROCESSORS");
  unsetenv("Computername");
}

TEST_F(LinuxEnvironmentTest, HasNoSystemFolder) {
  EXPECT_EQ(LinuxEnvironment().systemFolder(), "");
}

}  // namespace
}  // namespace veltrin
