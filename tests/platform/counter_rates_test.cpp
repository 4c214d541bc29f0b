// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "tests/platform/shop_counters.h"

namespace veltrin {
namespace {

class CounterRatesTest : public ShopTest {};

TEST_F(CounterRatesTest, TellsHowMuchARateGrewInEachSecond) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 100, 10)});
  collect({till("Left", 130, 14)});

  EXPECT_EQ(value(coins), 7.5);
  EXPECT_EQ(status_, 0);
}

TEST_F(CounterRatesTest, TellsAShareInPercent) {
  const auto open = add("\\\\MyPC\\Till(Left)\\% Open");

  collect({till("Left", 0, 10, 6)});
  collect({till("Left", 0, 14, 7)});

  EXPECT_EQ(value(open), 25);
  EXPECT_EQ(status_, 0);
}

TEST_F(CounterRatesTest, TellsNoShareAboveTheWhole) {
  const auto open = add("\\\\MyPC\\Till(Left)\\% Open");

  collect({till("Left", 0, 10, 6)});
  collect({till("Left", 0, 14, 11)});

  EXPECT_EQ(value(open), 100);
}

TEST_F(CounterRatesTest, TellsTheRateOfTheLastTwoSamplesAlone) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 0, 0)});
  collect({till("Left", 500, 1)});
  collect({till("Left", 503, 2)});

  EXPECT_EQ(value(coins), 3);
}

TEST_F(CounterRatesTest, HasNoRateAfterItsFirstSample) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 100, 10)});

  EXPECT_EQ(value(coins), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
}

TEST_F(CounterRatesTest, HasNoRateOfAnAmountThatWentBack) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 100, 10)});
  collect({till("Left", 3, 11)});

  EXPECT_EQ(value(coins), 0);
  EXPECT_EQ(status_, kPdhNegativeValue);
}

TEST_F(CounterRatesTest, HasNoRateAfterCollectionsWithinATenthOfASecond) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 100, 10)});
  collect({till("Left", 103, 10)});
  collect({till("Left", 106, 10.099)});

  EXPECT_EQ(value(coins), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
}

TEST_F(CounterRatesTest, HasARateATenthOfASecondAfterTheFirstCollection) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 100, 10)});
  collect({till("Left", 103, 10.125)});

  EXPECT_EQ(value(coins), 24);
  EXPECT_EQ(status_, 0);
}

TEST_F(CounterRatesTest, TellsTheSameRateAfterEachOfCollectionsInARow) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");
  for (const double second : {10.0, 10.00001, 10.00002}) collect({till("Left", 100, second)});

  for (const double second : {11.0, 11.00001, 11.00002}) {
    collect({till("Left", 600, second)});
    EXPECT_NEAR(value(coins), 500, 0.1);
  }
  for (const double second : {12.0, 12.00001, 12.00002}) {
    collect({till("Left", 700, second)});
    EXPECT_NEAR(value(coins), 100, 0.1);
  }
}

TEST_F(CounterRatesTest, TellsWhatHasComeBetweenCollectionsInARow) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");
  collect({till("Left", 0, 10)});
  collect({till("Left", 64, 11)});

  collect({till("Left", 65, 11)});

  EXPECT_EQ(value(coins), 65);
}

TEST_F(CounterRatesTest, TellsTheRateOfTheLastFifthOfASecondHoweverOftenItIsCollected) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");
  for (int i = 0; i < 100; ++i) collect({till("Left", 1, i * 0.0625)});
  ASSERT_EQ(value(coins), 0);

  for (int i = 100; i < 110; ++i) collect({till("Left", 1 + i - 99, i * 0.0625)});

  EXPECT_NEAR(value(coins), 16, 0.001);
}

TEST_F(CounterRatesTest, TellsTheSameShareAfterEachOfCollectionsInARow) {
  const auto open = add("\\\\MyPC\\Till(Left)\\% Open");
  collect({till("Left", 0, 10, 6)});
  collect({till("Left", 0, 14, 7)});

  collect({till("Left", 0, 14, 7)});

  EXPECT_EQ(value(open), 25);
  EXPECT_EQ(status_, 0);
}

TEST_F(CounterRatesTest, HasNoShareOfABasisThatStoodStill) {
  const auto open = add("\\\\MyPC\\Till(Left)\\% Open");
  collect({till("Left", 0, 10, 6)});
  setClock(11);
  service_.PdhCollectQueryData(query_);

  EXPECT_EQ(value(open), 0);
  EXPECT_EQ(status_, kPdhNegativeDenominator);
}

TEST_F(CounterRatesTest, HasARateAgainBehindAnAmountThatWentBack) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");
  collect({till("Left", 4294967290, 10)});
  collect({till("Left", 14, 11)});
  value(coins);
  ASSERT_EQ(status_, kPdhNegativeValue);

  collect({till("Left", 34, 12)});

  EXPECT_EQ(value(coins), 20);
  EXPECT_EQ(status_, 0);
}

TEST_F(CounterRatesTest, BeginsARateAnewWhenItsInstanceComesBack) {
  const auto coins = add("\\\\MyPC\\Till(Left)\\Coins/sec");
  collect({till("Left", 100, 1)});
  collect({});

  collect({till("Left", 200, 3)});
  value(coins);
  EXPECT_EQ(status_, kPdhInvalidData);

  collect({till("Left", 250, 4)});
  EXPECT_EQ(value(coins), 50);
}

TEST_F(CounterRatesTest, BeginsTheRateOfACounterThatIsAddedAgainAnew) {
  const auto first = add("\\\\MyPC\\Till(Left)\\Coins/sec");
  collect({till("Left", 0, 10)});
  collect({till("Left", 5, 11)});
  const auto second = add("\\\\MyPC\\Till(Left)\\Coins/sec");

  collect({till("Left", 12, 12)});
  EXPECT_EQ(value(second), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
  EXPECT_EQ(value(first), 7);

  collect({till("Left", 20, 13)});
  EXPECT_EQ(value(second), 8);
  EXPECT_EQ(value(first), 8);
}

TEST_F(CounterRatesTest, HasTheRateOfACounterThatWasAddedBetweenCollectionsInARowASecondLater) {
  const auto first = add("\\\\MyPC\\Till(Left)\\Coins/sec");
  collect({till("Left", 0, 10)});
  collect({till("Left", 5, 11)});
  const auto second = add("\\\\MyPC\\Till(Left)\\Coins/sec");
  collect({till("Left", 5, 11)});
  EXPECT_EQ(value(first), 5);
  EXPECT_EQ(value(second), 0);

  collect({till("Left", 14, 12)});

  EXPECT_EQ(value(second), 9);
  EXPECT_EQ(status_, 0);
}

TEST_F(CounterRatesTest, HasNoNumberOfACounterThatIsAddedAgainBeforeASample) {
  add("\\\\MyPC\\Till(Left)\\Coins");
  collect({till("Left", 9, 5)});
  const auto second = add("\\\\MyPC\\Till(Left)\\Coins");

  EXPECT_EQ(value(second), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
}

}  // namespace
}  // namespace veltrin
