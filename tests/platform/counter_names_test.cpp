// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/platform/shop_counters.h"

namespace veltrin {
namespace {

// The names of an object, as a caller with buffers of some lengths gets them.
class CounterNamesTest : public ShopTest {
 protected:
  static constexpr std::uint32_t kEnough = 32768;

  std::int32_t ask(const std::string& machine, const std::string& object,
                   std::uint32_t countersLength = kEnough,
                   std::uint32_t instancesLength = kEnough) {
    counters_.assign(countersLength, '-');
    instances_.assign(instancesLength, '-');
    countersLength_ = countersLength;
    instancesLength_ = instancesLength;
    return service_.PdhEnumObjectItemsA(machine, object, counters_, countersLength_, instances_,
                                        instancesLength_, kPerfDetailExpert, 0);
  }

  std::string told(const std::string& buffer, std::uint32_t length) const {
    return buffer.substr(0, length);
  }

  static std::string listOf(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) list += name + '\0';
    return list + '\0';
  }

  std::string counters_;
  std::string instances_;
  std::uint32_t countersLength_ = 0;
  std::uint32_t instancesLength_ = 0;
};

TEST_F(CounterNamesTest, AreThoseOfTheCountersAndTheInstances) {
  EXPECT_EQ(ask("\\\\MyPC", "Till"), 0);

  EXPECT_EQ(told(counters_, countersLength_), listOf({"Coins", "Coins/sec", "% Open"}));
  EXPECT_EQ(told(instances_, instancesLength_), listOf({"Left", "Right"}));
}

TEST_F(CounterNamesTest, LeaveTheRestOfABufferAlone) {
  ask("MyPC", "Till");

  EXPECT_EQ(counters_.substr(countersLength_), std::string(kEnough - countersLength_, '-'));
  EXPECT_EQ(instances_.substr(instancesLength_), std::string(kEnough - instancesLength_, '-'));
}

TEST_F(CounterNamesTest, AreToldForThisMachineHoweverItIsWritten) {
  for (const char* machine : {"", "MyPC", "mypc", "\\\\MYPC"}) {
    EXPECT_EQ(ask(machine, "TILL"), 0) << machine;
  }
}

TEST_F(CounterNamesTest, FitIntoBuffersOfTheirLengths) {
  ask("MyPC", "Till");

  EXPECT_EQ(ask("MyPC", "Till", countersLength_, instancesLength_), 0);

  EXPECT_EQ(counters_, listOf({"Coins", "Coins/sec", "% Open"}));
  EXPECT_EQ(instances_, listOf({"Left", "Right"}));
}

TEST_F(CounterNamesTest, WantMoreThanABufferForCountersHas) {
  EXPECT_EQ(ask("MyPC", "Till", 23, kEnough), kPdhMoreData);

  EXPECT_EQ(countersLength_, 24U);
  EXPECT_EQ(counters_, std::string(23, '-'));
}

TEST_F(CounterNamesTest, WantMoreThanABufferForInstancesHas) {
  EXPECT_EQ(ask("MyPC", "Till", kEnough, 11), kPdhMoreData);

  EXPECT_EQ(instancesLength_, 12U);
  EXPECT_EQ(instances_, std::string(11, '-'));
}

TEST_F(CounterNamesTest, TellTheirLengthsToWhoHasNoBuffersYet) {
  EXPECT_EQ(ask("MyPC", "Till", 0, 0), kPdhMoreData);

  EXPECT_EQ(countersLength_, 24U);
  EXPECT_EQ(instancesLength_, 12U);
}

TEST_F(CounterNamesTest, AreAnEmptyListWhenThereAreNoInstancesNow) {
  tills_.clear();

  EXPECT_EQ(ask("MyPC", "Till"), 0);

  EXPECT_EQ(told(instances_, instancesLength_), std::string(2, '\0'));
}

TEST_F(CounterNamesTest, HaveNoListOfInstancesWhenTheObjectHasNone) {
  EXPECT_EQ(ask("MyPC", "Door"), 0);

  EXPECT_EQ(told(counters_, countersLength_), listOf({"Guests"}));
  EXPECT_EQ(instancesLength_, 0U);
}

TEST_F(CounterNamesTest, AreNotThereForAnotherMachine) {
  EXPECT_EQ(ask("\\\\YourPC", "Till"), kPdhNoMachine);
  EXPECT_EQ(countersLength_, kEnough);
  EXPECT_EQ(counters_, std::string(kEnough, '-'));
}

TEST_F(CounterNamesTest, AreNotThereForAnotherObject) {
  EXPECT_EQ(ask("MyPC", "Shelf"), kPdhNoObject);
}

TEST_F(CounterNamesTest, AreNotThereForAnObjectThatTheSystemLacks) {
  EXPECT_EQ(ask("MyPC", "Lift"), kPdhNoObject);
}

}  // namespace
}  // namespace veltrin
