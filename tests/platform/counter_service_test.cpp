#include "platform/portable/counter_service.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace veltrin {
namespace {

// A shop whose tills are instances, with a counter of each kind.
class Shop : public CounterSource {
 public:
  Shop(std::vector<CounterInstance>& tills, int& reads) : tills_(tills), reads_(reads) {}

  std::string object() const override { return "Till"; }
  std::vector<CounterName> counters() const override {
    return {{"Coins", CounterKind::Number},
            {"Coins/sec", CounterKind::Rate},
            {"% Open", CounterKind::Share}};
  }
  std::vector<CounterInstance> read() const override {
    ++reads_;
    return tills_;
  }

 private:
  std::vector<CounterInstance>& tills_;
  int& reads_;
};

// An object without instances.
class Door : public CounterSource {
 public:
  std::string object() const override { return "Door"; }
  std::vector<CounterName> counters() const override { return {{"Guests", CounterKind::Number}}; }
  std::vector<CounterInstance> read() const override { return {{"", {{12, 1}}}}; }
};

class CounterServiceTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(service_.PdhOpenQuery(query_), 0); }

  static CounterService::Sources sources(std::vector<CounterInstance>& tills, int& reads) {
    CounterService::Sources made;
    made.push_back(std::make_unique<Shop>(tills, reads));
    made.push_back(std::make_unique<Door>());
    return made;
  }

  // At `second` a till holds so many coins, and was open for `open` of the seconds.
  static CounterInstance till(const std::string& name, double coins, double second,
                              double open = 0) {
    return {name, {{coins, 1}, {coins, second}, {open, second}}};
  }

  // Samples what the tills are like.
  std::int32_t collect(std::vector<CounterInstance> tills) {
    tills_ = std::move(tills);
    return service_.PdhCollectQueryData(query_);
  }

  Counters::Counter add(const std::string& path) {
    Counters::Counter counter = 0;
    EXPECT_EQ(service_.PdhVbAddCounter(query_, path, counter), 0) << path;
    return counter;
  }

  std::int32_t statusOfAdding(const std::string& path) {
    Counters::Counter counter = 77;
    const std::int32_t status = service_.PdhVbAddCounter(query_, path, counter);
    EXPECT_EQ(counter == 77, status != 0) << "the handle stays when the adding fails";
    return status;
  }

  double value(Counters::Counter counter) {
    return service_.PdhVbGetDoubleCounterValue(counter, status_);
  }

  std::vector<CounterInstance> tills_{till("Left", 0, 0), till("Right", 0, 0)};
  int reads_ = 0;
  CounterService service_{"MyPC", sources(tills_, reads_)};
  Counters::Query query_ = 0;
  std::int32_t status_ = -1;
};

TEST_F(CounterServiceTest, TellsANumberAfterOneSample) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins");

  EXPECT_EQ(collect({till("Left", 9, 5)}), 0);

  EXPECT_EQ(value(coins), 9);
  EXPECT_EQ(status_, 0);
}

TEST_F(CounterServiceTest, TellsHowMuchARateGrewInEachSecond) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 100, 10)});
  collect({till("Left", 130, 14)});

  EXPECT_EQ(value(coins), 7.5);
  EXPECT_EQ(status_, 0);
}

TEST_F(CounterServiceTest, TellsAShareInPercent) {
  const auto open = add("\\\\MyPC\\Till(Left)\\% Open");

  collect({till("Left", 0, 10, 6)});
  collect({till("Left", 0, 14, 7)});

  EXPECT_EQ(value(open), 25);
  EXPECT_EQ(status_, 0);
}

TEST_F(CounterServiceTest, TellsNoShareAboveTheWhole) {
  const auto open = add("\\\\MyPC\\Till(Left)\\% Open");

  collect({till("Left", 0, 10, 6)});
  collect({till("Left", 0, 14, 11)});

  EXPECT_EQ(value(open), 100);
}

TEST_F(CounterServiceTest, TellsTheRateOfTheLastTwoSamplesAlone) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 0, 0)});
  collect({till("Left", 500, 1)});
  collect({till("Left", 503, 2)});

  EXPECT_EQ(value(coins), 3);
}

TEST_F(CounterServiceTest, HasNoRateAfterItsFirstSample) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 100, 10)});

  EXPECT_EQ(value(coins), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
}

TEST_F(CounterServiceTest, HasNoNumberBeforeASample) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins");

  EXPECT_EQ(value(coins), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
}

TEST_F(CounterServiceTest, HasNoRateOfAnAmountThatWentBack) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 100, 10)});
  collect({till("Left", 3, 11)});

  EXPECT_EQ(value(coins), 0);
  EXPECT_EQ(status_, kPdhNegativeValue);
}

TEST_F(CounterServiceTest, HasNoRateWhenNoTimeHasPassed) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 100, 10)});
  collect({till("Left", 103, 10)});

  EXPECT_EQ(value(coins), 0);
  EXPECT_EQ(status_, kPdhNegativeDenominator);
}

TEST_F(CounterServiceTest, HasNoValueOfAnInstanceThatHasGone) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins");
  collect({till("Left", 9, 1)});

  EXPECT_EQ(collect({till("Right", 4, 2)}), kPdhNoData);

  EXPECT_EQ(value(coins), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
}

TEST_F(CounterServiceTest, BeginsARateAnewWhenItsInstanceComesBack) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");
  collect({till("Left", 100, 1)});
  collect({});

  collect({till("Left", 200, 3)});
  value(coins);
  EXPECT_EQ(status_, kPdhInvalidData);

  collect({till("Left", 250, 4)});
  EXPECT_EQ(value(coins), 50);
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
