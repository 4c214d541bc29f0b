#include <cstdlib>
#include <gtest/gtest.h>

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

TEST_F(LinuxEnvironmentTest, HasNoSystemFolder) {
  EXPECT_EQ(LinuxEnvironment().systemFolder(), "");
}

}  // namespace
}  // namespace veltrin
