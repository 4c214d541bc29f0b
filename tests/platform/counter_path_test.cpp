// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/counter_path.h"

#include <gtest/gtest.h>

namespace veltrin {
namespace {

TEST(CounterPathTest, HasAMachineAnObjectAnInstanceAndACounter) {
  const auto path = splitCounterPath("\\\\MYPC\\Processor(0)\\% Idle Time");
  ASSERT_TRUE(path.has_value());
  EXPECT_EQ(path->machine, "MYPC");
  EXPECT_EQ(path->object, "Processor");
  EXPECT_EQ(path->instance, "0");
  EXPECT_EQ(path->counter, "% Idle Time");
}

TEST(CounterPathTest, MayLeaveOutTheMachine) {
  const auto path = splitCounterPath("\\Processor(_Total)\\% Idle Time");
  ASSERT_TRUE(path.has_value());
  EXPECT_EQ(path->machine, std::nullopt);
  EXPECT_EQ(path->object, "Processor");
  EXPECT_EQ(path->instance, "_Total");
}

TEST(CounterPathTest, MayLeaveOutTheInstance) {
  const auto path = splitCounterPath("\\\\MYPC\\IPv4\\Datagrams/sec");
  ASSERT_TRUE(path.has_value());
  EXPECT_EQ(path->object, "IPv4");
  EXPECT_EQ(path->instance, std::nullopt);
  EXPECT_EQ(path->counter, "Datagrams/sec");
}

TEST(CounterPathTest, KeepsTheParenthesesOfAnInstance) {
  const auto path = splitCounterPath("\\Network Interface(Card (second))\\Bytes Sent/sec");
  ASSERT_TRUE(path.has_value());
  EXPECT_EQ(path->object, "Network Interface");
  EXPECT_EQ(path->instance, "Card (second)");
}

// What a computer without a name makes of it.
TEST(CounterPathTest, TakesAMachineWithAnEmptyName) {
  const auto path = splitCounterPath("\\\\\\Processor(0)\\% Idle Time");
  ASSERT_TRUE(path.has_value());
  EXPECT_EQ(path->machine, "");
  EXPECT_EQ(path->object, "Processor");
}

class NoCounterPathTest : public testing::TestWithParam<const char*> {};

TEST_P(NoCounterPathTest, IsNotTaken) { EXPECT_EQ(splitCounterPath(GetParam()), std::nullopt); }

INSTANTIATE_TEST_SUITE_P(All, NoCounterPathTest,
                         testing::Values("", "\\", "\\\\", "\\\\MYPC", "\\\\MYPC\\",
                                         "\\\\MYPC\\Processor", "Processor(0)\\% Idle Time",
                                         "\\Processor(0)", "\\Processor(0)\\", "\\\\% Idle Time",
                                         "\\\\MYPC\\\\% Idle Time", "\\(0)\\% Idle Time",
                                         "\\Processor(0\\% Idle Time",
                                         "\\Processor(0) \\% Idle Time"));

}  // namespace
}  // namespace veltrin
