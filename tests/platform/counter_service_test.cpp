// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/counter_service.h"

#include <gtest/gtest.h>

#include "tests/platform/shop_counters.h"

namespace veltrin {
namespace {

class CounterServiceTest : public ShopTest {};

TEST_F(CounterServiceTest, TellsANumberAfterOneSample) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins");

  EXPECT_EQ(collect({till("Left", 9, 5)}), 0);

  EXPECT_EQ(value(coins), 9);
  EXPECT_EQ(status_, 0);
}

TEST_F(CounterServiceTest, HasNoNumberBeforeASample) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins");

  EXPECT_EQ(value(coins), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
}

// Once for each of three tills, a second apart, and microseconds from till to till.
// Each collection replaces the one before, but the base goes on.
TEST_F(CounterServiceTest, HasNoValueOfAnInstanceThatHasGone) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins");
  collect({till("Left", 9, 1)});

  EXPECT_EQ(collect({till("Right", 4, 2)}), kPdhNoData);

  EXPECT_EQ(value(coins), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
}

TEST_F(CounterServiceTest, CollectsTheRestWhenOneInstanceHasGone) {
  add("\\\\MyPC\\Till(Left)\\Coins");
  const auto right = add("\\\\MyPC\\Till(Right)\\Coins");

  EXPECT_EQ(collect({till("Right", 4, 2)}), 0);

  EXPECT_EQ(value(right), 4);
}

TEST_F(CounterServiceTest, ReadsASourceOnceForAllItsCounters) {
  add("\\\\MyPC\\Till(Left)\\Coins");
  add("\\\\MyPC\\Till(Left)\\Coins/sec");
  add("\\\\MyPC\\Till(Right)\\Coins");
  reads_ = 0;

  service_.PdhCollectQueryData(query_);

  EXPECT_EQ(reads_, 1);
}

TEST_F(CounterServiceTest, GivesACounterThatIsAddedAgainAHandleOfItsOwn) {
  const auto first = add("\\\\MyPC\\Till(Left)\\Coins");
  const auto second = add("\\\\MyPC\\Till(Left)\\Coins");

  collect({till("Left", 9, 5)});

  EXPECT_NE(first, second);
  EXPECT_EQ(value(first), 9);
  EXPECT_EQ(value(second), 9);
}

// Another window has collected just before, and does so just afterwards.
TEST_F(CounterServiceTest, ReadsASourceOnceHoweverOftenItsCountersWereAdded) {
  for (int i = 0; i < 100; ++i) add("\\\\MyPC\\Till(Left)\\Coins/sec");
  reads_ = 0;

  service_.PdhCollectQueryData(query_);

  EXPECT_EQ(reads_, 1);
}

TEST_F(CounterServiceTest, KeepsQueriesApart) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins");
  Counters::Query other = 0;
  ASSERT_EQ(service_.PdhOpenQuery(other), 0);
  Counters::Counter guests = 0;
  ASSERT_EQ(service_.PdhVbAddCounter(other, "\\\\MyPC\\Door\\Guests", guests), 0);

  EXPECT_EQ(service_.PdhCollectQueryData(other), 0);

  EXPECT_EQ(value(guests), 12);
  value(coins);
  EXPECT_EQ(status_, kPdhInvalidData);
}

TEST_F(CounterServiceTest, ComparesNamesWithoutCase) {
  EXPECT_EQ(statusOfAdding("\\\\mypc\\TILL(left)\\coins"), 0);
}

TEST_F(CounterServiceTest, TakesAPathWithoutAMachine) {
  EXPECT_EQ(statusOfAdding("\\Till(Left)\\Coins"), 0);
}

TEST_F(CounterServiceTest, TakesAnObjectWithoutInstances) {
  const auto guests = add("\\\\MyPC\\Door\\Guests");

  EXPECT_EQ(service_.PdhCollectQueryData(query_), 0);

  EXPECT_EQ(value(guests), 12);
}

TEST_F(CounterServiceTest, KnowsNoObjectOfWhichNothingCanBeRead) {
  EXPECT_EQ(statusOfAdding("\\\\MyPC\\Lift\\Rides"), kPdhNoObject);
}

TEST_F(CounterServiceTest, KnowsNoOtherMachine) {
  EXPECT_EQ(statusOfAdding("\\\\YourPC\\Till(Left)\\Coins"), kPdhNoMachine);
}

TEST_F(CounterServiceTest, KnowsNoOtherObject) {
  EXPECT_EQ(statusOfAdding("\\\\MyPC\\Shelf(Left)\\Coins"), kPdhNoObject);
}

TEST_F(CounterServiceTest, KnowsNoOtherInstance) {
  EXPECT_EQ(statusOfAdding("\\\\MyPC\\Till(Middle)\\Coins"), kPdhNoInstance);
}

TEST_F(CounterServiceTest, WantsAnInstanceWhereThereAreSome) {
  EXPECT_EQ(statusOfAdding("\\\\MyPC\\Till\\Coins"), kPdhNoInstance);
}

TEST_F(CounterServiceTest, KnowsNoOtherCounter) {
  EXPECT_EQ(statusOfAdding("\\\\MyPC\\Till(Left)\\Notes"), kPdhNoCounter);
}

TEST_F(CounterServiceTest, TakesNoTextThatIsNoPath) {
  EXPECT_EQ(statusOfAdding("Till"), kPdhBadCounterName);
}

TEST_F(CounterServiceTest, AddsNothingToAQueryThatWasNeverOpened) {
  Counters::Counter counter = 77;
  for (const Counters::Query query : {Counters::Query{0}, query_ + 1, Counters::Query{-1}}) {
    EXPECT_EQ(service_.PdhVbAddCounter(query, "\\\\MyPC\\Door\\Guests", counter),
              kPdhInvalidHandle);
  }
  EXPECT_EQ(counter, 77);
}

TEST_F(CounterServiceTest, CollectsNothingForAQueryThatWasNeverOpened) {
  EXPECT_EQ(service_.PdhCollectQueryData(0), kPdhInvalidHandle);
  EXPECT_EQ(service_.PdhCollectQueryData(query_ + 1), kPdhInvalidHandle);
}

TEST_F(CounterServiceTest, HasNoDataForAQueryWithoutCounters) {
  EXPECT_EQ(service_.PdhCollectQueryData(query_), kPdhNoData);
}

TEST_F(CounterServiceTest, HasNoValueOfACounterThatWasNeverAdded) {
  for (const Counters::Counter counter : {0, 1, -1}) {
    EXPECT_EQ(value(counter), 0);
    EXPECT_EQ(status_, kPdhInvalidHandle);
  }
}

// The numbers that the system documents (pdhmsg.h).
TEST_F(CounterServiceTest, GivesTheStatusesOfTheSystem) {
  EXPECT_EQ(static_cast<std::uint32_t>(kPdhNoMachine), 0x800007D0U);
  EXPECT_EQ(static_cast<std::uint32_t>(kPdhNoInstance), 0x800007D1U);
  EXPECT_EQ(static_cast<std::uint32_t>(kPdhNoData), 0x800007D5U);
  EXPECT_EQ(static_cast<std::uint32_t>(kPdhNegativeDenominator), 0x800007D6U);
  EXPECT_EQ(static_cast<std::uint32_t>(kPdhNegativeValue), 0x800007D8U);
  EXPECT_EQ(static_cast<std::uint32_t>(kPdhNoObject), 0xC0000BB8U);
  EXPECT_EQ(static_cast<std::uint32_t>(kPdhNoCounter), 0xC0000BB9U);
  EXPECT_EQ(static_cast<std::uint32_t>(kPdhInvalidHandle), 0xC0000BBCU);
  EXPECT_EQ(static_cast<std::uint32_t>(kPdhBadCounterName), 0xC0000BC0U);
  EXPECT_EQ(static_cast<std::uint32_t>(kPdhInvalidData), 0xC0000BC6U);
}

}  // namespace
}  // namespace veltrin
