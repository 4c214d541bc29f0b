// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstdio>
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

// The names of an object: the service of this system may know no such object, but answers
// by the call's rules. A status of 0 comes with lists of the lengths that it tells.
class WindowsCounterNamesTest : public WindowsCountersTest {
 protected:
  static constexpr std::uint32_t kEnough = 32768;

  std::int32_t ask(const std::string& machine, const std::string& object,
                   std::uint32_t length = kEnough) {
    names_.assign(length, '-');
    instances_.assign(length, '-');
    namesLength_ = length;
    instancesLength_ = length;
    return counters_.PdhEnumObjectItemsA(machine, object, names_, namesLength_, instances_,
                                         instancesLength_, kPerfDetailExpert, 0);
  }

  // Whether a list has the length that was told and ends as a list does.
  static void expectList(const std::string& list, std::uint32_t length) {
    ASSERT_LE(length, list.size());
    if (length == 0) return;
    EXPECT_EQ(list[length - 1], '\0');
    EXPECT_EQ(list.substr(length), std::string(list.size() - length, '-'))
        << "written behind its end";
  }

  std::string names_;
  std::string instances_;
  std::uint32_t namesLength_ = 0;
  std::uint32_t instancesLength_ = 0;
};

TEST_F(WindowsCounterNamesTest, AreListsOfTheToldLengths) {
  for (const char* object : {"Network Interface", "IPv4", "System", "Processor"}) {
    SCOPED_TRACE(object);
    const std::int32_t status = ask("", object);
    std::printf("%s: status %08X, %u and %u characters\n", object, static_cast<unsigned>(status),
                namesLength_, instancesLength_);
    if (status == 0) {
      expectList(names_, namesLength_);
      expectList(instances_, instancesLength_);
      EXPECT_GT(namesLength_, 2U) << "an object has counters";
    } else {
      EXPECT_EQ(names_, std::string(kEnough, '-'));
      EXPECT_EQ(instances_, std::string(kEnough, '-'));
    }
  }
}

TEST_F(WindowsCounterNamesTest, DoNotFitIntoBuffersOfOneCharacter) {
  const std::int32_t withRoom = ask("", "Network Interface");

  const std::int32_t status = ask("", "Network Interface", 1);

  EXPECT_EQ(status, withRoom == 0 ? kPdhMoreData : withRoom);
  EXPECT_EQ(names_.size(), 1U);
}

TEST_F(WindowsCounterNamesTest, AreNotThereForAnotherObject) {
  EXPECT_NE(ask("", "No Such Object"), 0);
}

TEST_F(WindowsCounterNamesTest, AreNotThereForAMachineThatThereIsNot) {
  EXPECT_NE(ask("\\\\no-such-machine.invalid", "Network Interface"), 0);
}

}  // namespace
}  // namespace veltrin
