#include <array>
#include <gtest/gtest.h>
#include <string>
#include <windows.h>

#include "platform/portable/counter_service.h"
#include "platform/windows/windows_counters.h"

namespace veltrin {
namespace {

// Wine knows two counters only, the time since its start and the load of the processor,
// so that the idle time of a processor is refused there; what is expected here holds on
// Windows and on Wine.
class WindowsCountersTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(counters_.PdhOpenQuery(query_), 0); }

  std::int32_t statusOfAdding(const std::string& path) {
    return counters_.PdhVbAddCounter(query_, path, counter_);
  }

  WindowsCounters counters_;
  Counters::Query query_ = 0;
  Counters::Counter counter_ = 77;
  std::int32_t status_ = -1;
};

TEST_F(WindowsCountersTest, TellsHowLongTheSystemHasBeenUp) {
  ASSERT_EQ(statusOfAdding("\\System\\System Up Time"), 0);
  ASSERT_EQ(counters_.PdhCollectQueryData(query_), 0);

  EXPECT_GT(counters_.PdhVbGetDoubleCounterValue(counter_, status_), 0);
  EXPECT_EQ(status_, 0);
}

TEST_F(WindowsCountersTest, TakesAPathWithTheNameOfThisMachine) {
  std::array<char, MAX_COMPUTERNAME_LENGTH + 1> name{};
  DWORD size = name.size();
  ASSERT_NE(GetComputerNameA(name.data(), &size), FALSE);

  EXPECT_EQ(statusOfAdding("\\\\" + std::string(name.data()) + "\\System\\System Up Time"), 0);
}

TEST_F(WindowsCountersTest, KnowsNoOtherCounter) {
  EXPECT_NE(statusOfAdding("\\System\\No Such Counter"), 0);
  EXPECT_EQ(counter_, 77);
}

TEST_F(WindowsCountersTest, TakesNoTextThatIsNoPath) {
  EXPECT_NE(statusOfAdding("System"), 0);
  EXPECT_EQ(counter_, 77);
}

TEST_F(WindowsCountersTest, AddsNothingToAQueryThatWasNeverOpened) {
  EXPECT_EQ(counters_.PdhVbAddCounter(0, "\\System\\System Up Time", counter_), kPdhInvalidHandle);
  EXPECT_EQ(counter_, 77);
}

TEST_F(WindowsCountersTest, HasNoDataForAQueryWithoutCounters) {
  EXPECT_EQ(counters_.PdhCollectQueryData(query_), kPdhNoData);
}

TEST_F(WindowsCountersTest, CollectsNothingForAQueryThatWasNeverOpened) {
  EXPECT_EQ(counters_.PdhCollectQueryData(0), kPdhInvalidHandle);
}

TEST_F(WindowsCountersTest, HasNoValueOfACounterThatWasNeverAdded) {
  EXPECT_EQ(counters_.PdhVbGetDoubleCounterValue(0, status_), 0);
  EXPECT_EQ(status_, kPdhInvalidHandle);
}

}  // namespace
}  // namespace veltrin
