// SPDX-License-Identifier: GPL-3.0-or-later
// The places, colours and limits by which the dial gauge draws.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "gauge_text.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

std::string pointOn(const bkCProg& gauge, double distance, std::int32_t degrees) {
  const MoveToEx point = gauge.PointOnCircle(distance, degrees);
  return toText(point.x, point.y);
}

// How many of a gauge's operations begin with that word.
std::ptrdiff_t countOf(const bkCProg& gauge, const std::string& word) {
  const Operations texts = drawn(gauge);
  return std::count_if(texts.begin(), texts.end(), [&](const std::string& text) {
    return text.substr(0, word.size() + 1) == word + " ";
  });
}

// A gauge whose face has ticks alone, as lines.
class TicksAlone : public testing::Test {
 protected:
  TicksAlone() {
    gauge.ShowCircle = false;
    gauge.ShowArc = false;
    gauge.ShowBorder = false;
    gauge.TickStyle = kLineTicks;
  }

  bkCProg gauge;
};

// --- Places ---

TEST(PointOnCircle, NinetyDegreesOfTheShortPiEndAPixelAboveTheMiddle) {
  const bkCProg gauge;
  EXPECT_EQ(pointOn(gauge, 10, 90), "60 49");
}

TEST(PointOnCircle, ZeroDegreesAreTheTop) {
  const bkCProg gauge;
  EXPECT_EQ(pointOn(gauge, 10, 0), "50 40");
}

TEST(PointOnCircle, ClockwiseRunsOverTheRightToTheBottomAndTheLeft) {
  const bkCProg gauge;
  EXPECT_EQ(pointOn(gauge, 10, 180), "50 60");
  EXPECT_EQ(pointOn(gauge, 10, 270), "40 50");
}

TEST(PointOnCircle, AgainstTheClockRunsOverTheLeftAndTheOffsetToTheRight) {
  bkCProg gauge;
  gauge.Clockwise = false;
  gauge.OffsetAngle = 90;
  EXPECT_EQ(pointOn(gauge, 10, 0), "60 50");
  EXPECT_EQ(pointOn(gauge, 10, 45), "57 42");
  EXPECT_EQ(pointOn(gauge, 10, 90), "50 40");
}

TEST(PointOnCircle, AnOffsetTurnsTheScale) {
  bkCProg gauge;
  gauge.OffsetAngle = 210;
  EXPECT_EQ(pointOn(gauge, 40, 0), "30 84");
  EXPECT_EQ(pointOn(gauge, 40, 150), "50 10");
  EXPECT_EQ(pointOn(gauge, 40, 302), "68 85");
}

TEST(PointOnCircle, PlacesAreCutTowardsZero) {
  bkCProg gauge;
  gauge.XCenter = 0;
  gauge.YCenter = 0;
  EXPECT_EQ(pointOn(gauge, 10.9, 225), "-7 7");
  EXPECT_EQ(pointOn(gauge, 10.9, 45), "7 -7");
}

TEST(PointOnCircle, APlaceBeyond32BitsStaysWithin) {
  bkCProg gauge;
  gauge.XCenter = 2147483647;
  gauge.YCenter = -2147483647;
  EXPECT_EQ(pointOn(gauge, 1e9, 90), "2147483647 -2147483648");
  EXPECT_EQ(pointOn(gauge, 1, 180), "2147483647 -2147483646");
}

// --- Colours of the scale ---

TEST(ColorAt, TheMiddleOfThreeColoursIsTheMiddleOneExactly) {
  bkCProg gauge;
  gauge.MidColor = 0x010203;
  EXPECT_EQ(gauge.ColorAt(0.5F), (Colour{3, 2, 1}));
}

TEST(ColorAt, ThreeColoursRunFromTheStartOverTheMiddleToTheEnd) {
  const bkCProg gauge;
  EXPECT_EQ(toText(gauge.ColorAt(0)), "#c00000");
  EXPECT_EQ(toText(gauge.ColorAt(0.25F)), "#e08000");
  EXPECT_EQ(toText(gauge.ColorAt(0.49F)), "#fefa00");
  EXPECT_EQ(toText(gauge.ColorAt(0.51F)), "#fafe00");
  EXPECT_EQ(toText(gauge.ColorAt(0.75F)), "#80e000");
  EXPECT_EQ(toText(gauge.ColorAt(1)), "#00c000");
}

TEST(ColorAt, TwoColoursRunFromTheStartToTheEnd) {
  bkCProg gauge;
  gauge.Tricolor = false;
  EXPECT_EQ(toText(gauge.ColorAt(0)), "#c00000");
  EXPECT_EQ(toText(gauge.ColorAt(0.5F)), "#606000");
  EXPECT_EQ(toText(gauge.ColorAt(1)), "#00c000");
}

TEST(ColorAt, OutsideOfTheScaleTheColoursAreThoseOfItsEnds) {
  const bkCProg gauge;
  EXPECT_EQ(toText(gauge.ColorAt(-1)), "#c00000");
  EXPECT_EQ(toText(gauge.ColorAt(2)), "#00c000");
}

TEST(ColorAt, AColourThatIsWrittenIsTranslatedAtOnce) {
  bkCProg gauge;
  gauge.StartColor = kButtonText;
  gauge.EndColor = kButtonFace;
  EXPECT_EQ(toText(gauge.ColorAt(0)), "#23221e");
  EXPECT_EQ(toText(gauge.ColorAt(1)), "#ecebe6");
}

TEST(Blend, HalvesOfAColourAreRoundedToTheEvenNumber) {
  EXPECT_EQ(blend(0.5F, {1, 3, 255}, {0, 0, 0}), (Colour{0, 2, 128}));
}

TEST(Blend, AShareOfNothingOrAllIsTheColourItself) {
  EXPECT_EQ(blend(0, {1, 2, 3}, {4, 5, 6}), (Colour{4, 5, 6}));
  EXPECT_EQ(blend(1, {1, 2, 3}, {4, 5, 6}), (Colour{1, 2, 3}));
  EXPECT_EQ(blend(-0.5F, {1, 2, 3}, {4, 5, 6}), (Colour{4, 5, 6}));
  EXPECT_EQ(blend(1.5F, {1, 2, 3}, {4, 5, 6}), (Colour{1, 2, 3}));
}

TEST(Translated, APlainColourHasItsRedInTheLowestByte) {
  EXPECT_EQ(translated(0x95B7BD), kButtonColour);
}

TEST(Translated, ANumberThatTheSystemDoesNotKnowIsBlack) {
  EXPECT_EQ(translated(0x80000018), (Colour{0xFF, 0xFD, 0xF2}));
  EXPECT_EQ(translated(0x80000019), (Colour{0, 0, 0}));
  EXPECT_EQ(translated(0xFFFFFFFF), (Colour{0, 0, 0}));
}

// --- Ticks ---

TEST_F(TicksAlone, AFrequencyOfTenOnAHundredGivesTenTicksOnAWholeTurn) {
  EXPECT_EQ(countOf(gauge, "LineTo"), 10);
  EXPECT_THAT(drawn(gauge),
              ElementsAre("Cls #ecebe6", "SelectPen #000000 1", "SelectBrush none",
                          "MoveToEx 50 25", "LineTo 50 29", "MoveToEx 64 29", "LineTo 62 33",
                          "MoveToEx 73 42", "LineTo 69 43", "MoveToEx 73 57", "LineTo 69 56",
                          "MoveToEx 64 70", "LineTo 62 66", "MoveToEx 50 75", "LineTo 50 71",
                          "MoveToEx 35 70", "LineTo 37 66", "MoveToEx 26 57", "LineTo 30 56",
                          "MoveToEx 26 42", "LineTo 30 43", "MoveToEx 35 29", "LineTo 37 33"));
}

TEST_F(TicksAlone, TheLastTickOfAPartOfATurnStandsAtItsEnd) {
  gauge.Span = 180;
  EXPECT_EQ(countOf(gauge, "LineTo"), 11);
  EXPECT_EQ(drawn(gauge).back(), "LineTo 50 71");
}

TEST_F(TicksAlone, WithoutARangeThereAreNone) {
  gauge.Max = 0;
  EXPECT_THAT(drawn(gauge), ElementsAre("Cls #ecebe6"));
}

TEST_F(TicksAlone, AFrequencyOfZeroHasNone) {
  gauge.TickFrequency = 0;
  EXPECT_EQ(countOf(gauge, "LineTo"), 0);
}

TEST_F(TicksAlone, AFrequencyBelowZeroHasNone) {
  gauge.TickFrequency = -10;
  EXPECT_EQ(countOf(gauge, "LineTo"), 0);
}

TEST_F(TicksAlone, TicksCloserThanADegreeStandOnEachDegreeOnce) {
  gauge.TickFrequency = 1e-30F;
  EXPECT_EQ(countOf(gauge, "LineTo"), 360);
  gauge.TickFrequency = 0.1F;
  EXPECT_EQ(countOf(gauge, "LineTo"), 360);
}

TEST_F(TicksAlone, TheFirstTickIsDrawnHoweverFarTheNextOneIs) {
  gauge.TickFrequency = 1e30F;
  EXPECT_EQ(countOf(gauge, "LineTo"), 1);
}

TEST_F(TicksAlone, AStyleThatThereIsNotDrawsNothing) {
  for (const std::int32_t style : {6, -1, 2147483647}) {
    gauge.TickStyle = style;
    EXPECT_THAT(drawn(gauge), ElementsAre("Cls #ecebe6")) << style;
  }
}

TEST_F(TicksAlone, APositionThatThereIsNotDrawsNothing) {
  for (const std::int32_t position : {3, -1}) {
    gauge.TickPosition = position;
    EXPECT_THAT(drawn(gauge), ElementsAre("Cls #ecebe6")) << position;
  }
}

// --- Values ---

TEST(GaugeValue, WithoutARangeTheNeedleStaysWhereItWas) {
  bkCProg gauge;
  gauge.ShowNeedle = true;
  gauge.Value = 25;
  EXPECT_EQ(drawn(gauge).back(), "LineTo 74 49");
  gauge.Max = 0;
  EXPECT_EQ(drawn(gauge).back(), "LineTo 74 49");
}

TEST(GaugeValue, OverAPartOfATurnTheFractionStaysHoweverOftenItIsDrawn) {
  bkCProg gauge;
  gauge.ShowNeedle = true;
  gauge.Span = 180;
  gauge.Max = 50;
  EXPECT_EQ(drawn(gauge).back(), "LineTo 50 74");
  gauge.Max = 0;
  gauge.Repaint();
  EXPECT_EQ(drawn(gauge).back(), "LineTo 50 74");
}

TEST(GaugeValue, AValueThatALaterTopHasLeftAboveStandsAtTheTop) {
  bkCProg gauge;
  gauge.ShowNeedle = true;
  gauge.Span = 180;
  gauge.Max = 1;
  EXPECT_EQ(drawn(gauge).back(), "LineTo 50 74");
}

TEST(GaugeValue, AValueThatALaterBottomHasLeftBelowStandsAtTheBottom) {
  bkCProg gauge;
  gauge.ShowNeedle = true;
  gauge.Min = 60;
  EXPECT_EQ(drawn(gauge).back(), "LineTo 50 26");
}

TEST(GaugeValue, TheWidestScaleIsOne) {
  bkCProg gauge;
  gauge.ShowNeedle = true;
  gauge.Max = 2147483647;
  gauge.Min = -2147483647;
  gauge.Value = 0;
  EXPECT_EQ(drawn(gauge).back(), "LineTo 50 74");
}

TEST(GaugeValue, TheWholeScaleHasASpokeForEachDegreeAndBothEnds) {
  bkCProg gauge;
  gauge.ShowBorder = false;
  gauge.ShowCircle = false;
  gauge.Value = 100;
  EXPECT_EQ(countOf(gauge, "LineTo"), 361);
}

TEST(GaugeValue, APercentageOfNoRangeIsNotWritten) {
  bkCProg gauge;
  gauge.ShowValue = true;
  gauge.ShowValueAsPercent = true;
  gauge.Max = 0;
  EXPECT_EQ(countOf(gauge, "TextOutA"), 0);
}

TEST(GaugeValue, APercentageIsRoundedHalfUp) {
  bkCProg gauge;
  gauge.ShowValue = true;
  gauge.ShowValueAsPercent = true;
  gauge.Max = 1000;
  gauge.Value = 125;
  EXPECT_EQ(drawn(gauge).back(), "TextOutA 41 44 \"13%\"");
  gauge.Value = 285;
  EXPECT_EQ(drawn(gauge).back(), "TextOutA 41 44 \"29%\"");
  gauge.Value = 640;
  EXPECT_EQ(drawn(gauge).back(), "TextOutA 41 44 \"64%\"");
  gauge.Value = 0;
  EXPECT_EQ(drawn(gauge).back(), "TextOutA 44 44 \"0%\"");
}

TEST(GaugeValue, AValueBelowZeroIsWrittenWithItsSign) {
  bkCProg gauge;
  gauge.ShowValue = true;
  gauge.Min = -100;
  gauge.Value = -7;
  EXPECT_EQ(drawn(gauge).back(), "TextOutA 44 44 \"-7\"");
}

TEST(GaugeValue, TheTextHasTheFontOfTheGauge) {
  bkCProg gauge;
  gauge.ShowValue = true;
  gauge.Font = DeviceFont{"Liberation Serif", 12, true, true};
  EXPECT_EQ(countOf(gauge, "SelectFont Liberation Serif 12 bold"), 1);
}

}  // namespace
}  // namespace veltrin
