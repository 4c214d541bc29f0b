// SPDX-License-Identifier: GPL-3.0-or-later
// How fast bytes come in.
#include "download/transfer_meter.h"

#include <gtest/gtest.h>

namespace veltrin {
namespace {

class TransferMeterTest : public ::testing::Test {
 protected:
  TransferMeterTest() { meter.start(10'000); }

  TransferMeter meter;
};

TEST_F(TransferMeterTest, IsStillBeforeAnythingHasCome) {
  EXPECT_EQ(meter.speed(10'000), 0);
  EXPECT_EQ(meter.speed(10'900), 0);
  EXPECT_EQ(meter.mean(10'900), 0);
  EXPECT_EQ(meter.total(), 0);
}

TEST_F(TransferMeterTest, TellsAnEvenStreamAsItIs) {
  for (std::int64_t step = 1; step <= 20; ++step) meter.count(step * 25'000, 10'000 + step * 50);
  EXPECT_EQ(meter.speed(11'000), 500);
  EXPECT_EQ(meter.mean(11'000), 500);
  EXPECT_EQ(meter.total(), 500'000);
}

TEST_F(TransferMeterTest, CountsABurstForHalfASecond) {
  meter.count(1'000'000, 11'000);
  EXPECT_EQ(meter.speed(11'000), 2000);
  EXPECT_EQ(meter.speed(11'499), 2000);
  EXPECT_EQ(meter.speed(11'500), 0);
}

TEST_F(TransferMeterTest, AddsTheBurstsOfItsHalfSecondOnly) {
  meter.count(100'000, 11'000);
  meter.count(150'000, 11'300);
  meter.count(350'000, 11'600);
  EXPECT_EQ(meter.speed(11'600), 500);  // 250,000 bytes since 11,100
}

TEST_F(TransferMeterTest, BurstsOfOneMillisecondAddUp) {
  meter.count(100'000, 11'000);
  meter.count(250'000, 11'000);
  EXPECT_EQ(meter.speed(11'000), 500);
}

TEST_F(TransferMeterTest, IsStillInAStallOfTwoSecondsAndGoesOnBehindIt) {
  meter.count(200'000, 10'400);
  EXPECT_EQ(meter.speed(11'400), 0);
  EXPECT_EQ(meter.speed(12'400), 0);
  meter.count(260'000, 12'400);
  EXPECT_EQ(meter.speed(12'400), 120);
  EXPECT_NEAR(meter.mean(12'400), 108.333, 0.001);
}

TEST_F(TransferMeterTest, ALastFragmentIsAboveZero) {
  meter.count(1, 12'000);
  EXPECT_EQ(meter.speed(12'100), 0.002);
}

TEST_F(TransferMeterTest, TheFirstHalfSecondIsTakenOverWhatHasPassedOfIt) {
  meter.count(50'000, 10'200);
  EXPECT_EQ(meter.speed(10'250), 200);
}

TEST_F(TransferMeterTest, AFirstBurstIsTakenOverATenthOfASecondAtLeast) {
  meter.count(50'000, 10'001);
  EXPECT_EQ(meter.speed(10'001), 500);
}

TEST_F(TransferMeterTest, AClockThatStandsStillDividesByNothing) {
  meter.count(40'000, 10'000);
  meter.count(50'000, 10'000);
  EXPECT_EQ(meter.speed(10'000), 500);
  EXPECT_EQ(meter.mean(10'000), 50'000);
}

TEST_F(TransferMeterTest, ACountThatDoesNotGrowIsNothingNew) {
  meter.count(50'000, 10'200);
  meter.count(50'000, 10'600);
  meter.count(40'000, 10'600);
  EXPECT_EQ(meter.total(), 50'000);
  EXPECT_EQ(meter.speed(10'650), 100);
  EXPECT_EQ(meter.speed(10'700), 0);
}

TEST_F(TransferMeterTest, BeginsAnewWithTheNextRead) {
  meter.count(50'000, 10'200);
  meter.start(10'300);
  EXPECT_EQ(meter.total(), 0);
  EXPECT_EQ(meter.speed(10'300), 0);
  meter.count(1000, 10'500);
  EXPECT_EQ(meter.speed(10'500), 5);
  EXPECT_EQ(meter.mean(10'500), 5);
}

TEST_F(TransferMeterTest, CountsBeyond32Bits) {
  meter.count(6'000'000'000, 20'000);
  EXPECT_EQ(meter.total(), 6'000'000'000);
  EXPECT_EQ(meter.mean(20'000), 600'000);
}

}  // namespace
}  // namespace veltrin
