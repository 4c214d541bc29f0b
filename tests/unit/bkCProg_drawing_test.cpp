// SPDX-License-Identifier: GPL-3.0-or-later
// How the dial gauge draws, step by step.
#include <gtest/gtest.h>

#include "gauge_text.h"

namespace veltrin {
namespace {

// A gauge of the default place, with a radius of 25 pixels around (50, 50), of whose face
// nothing is drawn yet.
class GaugeDrawing : public testing::Test {
 protected:
  GaugeDrawing() {
    gauge.ShowCircle = false;
    gauge.ShowArc = false;
    gauge.ShowBorder = false;
  }

  bkCProg gauge;
};

TEST_F(GaugeDrawing, WithEveryPartOffItIsItsGround) {
  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6"}));
}

TEST_F(GaugeDrawing, TheGroundHasTheBackColour) {
  gauge.BackColor = 0x332211;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #112233"}));
}

TEST_F(GaugeDrawing, AWholeCircleIsAFilledEllipseOfTheRadius) {
  gauge.ShowCircle = true;
  gauge.CircleColor = 0xFF0000;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #0000ff 1", "SelectBrush #0000ff",
                                      "Ellipse 25 25 76 76"}));
}

TEST_F(GaugeDrawing, AWholeCircleKeepsItsPlaceBesideABorder) {
  gauge.ShowCircle = true;
  gauge.CircleColor = 0xFF0000;
  gauge.XCenter = 40;
  gauge.YCenter = 60;
  gauge.Radius = 10;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #0000ff 1", "SelectBrush #0000ff",
                                      "Ellipse 30 50 51 71"}));
}

TEST_F(GaugeDrawing, ACircleInTheColourOfTheGroundIsNotDrawn) {
  gauge.ShowCircle = true;
  gauge.CircleColor = 0xE6EBEC;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6"}));
}

TEST_F(GaugeDrawing, BehindAPartOfATurnTheCircleIsSpokesFromTheEndOfTheScaleDownToTheValue) {
  gauge.ShowCircle = true;
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.CircleColor = 0xFF0000;
  gauge.Span = 45;
  gauge.Value = 95;

  EXPECT_EQ(
      drawn(gauge),
      (Operations{"Cls #ecebe6",         "SelectPen #0000ff 2", "MoveToEx 50 50", "LineTo 67 32",
                  "MoveToEx 50 50",      "LineTo 67 32",        "MoveToEx 50 50", "LineTo 67 31",
                  "SelectPen #c00000 2", "MoveToEx 50 50",      "LineTo 50 25",   "MoveToEx 50 50",
                  "LineTo 50 25",        "MoveToEx 50 50",      "LineTo 50 25",   "MoveToEx 50 50",
                  "LineTo 51 25",        "MoveToEx 50 50",      "LineTo 51 25",   "MoveToEx 50 50",
                  "LineTo 52 25",        "MoveToEx 50 50",      "LineTo 52 25",   "MoveToEx 50 50",
                  "LineTo 53 25",        "MoveToEx 50 50",      "LineTo 53 25",   "MoveToEx 50 50",
                  "LineTo 53 25",        "MoveToEx 50 50",      "LineTo 54 25",   "MoveToEx 50 50",
                  "LineTo 54 25",        "MoveToEx 50 50",      "LineTo 55 25",   "MoveToEx 50 50",
                  "LineTo 55 25",        "MoveToEx 50 50",      "LineTo 56 25",   "MoveToEx 50 50",
                  "LineTo 56 25",        "MoveToEx 50 50",      "LineTo 56 25",   "MoveToEx 50 50",
                  "LineTo 57 26",        "MoveToEx 50 50",      "LineTo 57 26",   "MoveToEx 50 50",
                  "LineTo 58 26",        "MoveToEx 50 50",      "LineTo 58 26",   "MoveToEx 50 50",
                  "LineTo 58 26",        "MoveToEx 50 50",      "LineTo 59 26",   "MoveToEx 50 50",
                  "LineTo 59 26",        "MoveToEx 50 50",      "LineTo 60 27",   "MoveToEx 50 50",
                  "LineTo 60 27",        "MoveToEx 50 50",      "LineTo 60 27",   "MoveToEx 50 50",
                  "LineTo 61 27",        "MoveToEx 50 50",      "LineTo 61 27",   "MoveToEx 50 50",
                  "LineTo 62 28",        "MoveToEx 50 50",      "LineTo 62 28",   "MoveToEx 50 50",
                  "LineTo 62 28",        "MoveToEx 50 50",      "LineTo 63 28",   "MoveToEx 50 50",
                  "LineTo 63 29",        "MoveToEx 50 50",      "LineTo 63 29",   "MoveToEx 50 50",
                  "LineTo 64 29",        "MoveToEx 50 50",      "LineTo 64 29",   "MoveToEx 50 50",
                  "LineTo 65 30",        "MoveToEx 50 50",      "LineTo 65 30",   "MoveToEx 50 50",
                  "LineTo 65 30",        "MoveToEx 50 50",      "LineTo 66 30",   "MoveToEx 50 50",
                  "LineTo 66 31",        "MoveToEx 50 50",      "LineTo 66 31",   "MoveToEx 50 50",
                  "LineTo 67 31"}));
}

TEST_F(GaugeDrawing, BehindAPartOfATurnWithoutAnArcTheCircleCoversTheWholeScale) {
  gauge.ShowCircle = true;
  gauge.CircleColor = 0xFF0000;
  gauge.Span = 45;
  gauge.Value = 95;
  gauge.Radius = 10;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6",    "SelectPen #0000ff 1", "MoveToEx 50 50", "LineTo 57 42",
                        "MoveToEx 50 50", "LineTo 56 42",        "MoveToEx 50 50", "LineTo 56 42",
                        "MoveToEx 50 50", "LineTo 56 42",        "MoveToEx 50 50", "LineTo 56 42",
                        "MoveToEx 50 50", "LineTo 56 42",        "MoveToEx 50 50", "LineTo 56 42",
                        "MoveToEx 50 50", "LineTo 56 42",        "MoveToEx 50 50", "LineTo 56 42",
                        "MoveToEx 50 50", "LineTo 55 41",        "MoveToEx 50 50", "LineTo 55 41",
                        "MoveToEx 50 50", "LineTo 55 41",        "MoveToEx 50 50", "LineTo 55 41",
                        "MoveToEx 50 50", "LineTo 55 41",        "MoveToEx 50 50", "LineTo 55 41",
                        "MoveToEx 50 50", "LineTo 54 41",        "MoveToEx 50 50", "LineTo 54 41",
                        "MoveToEx 50 50", "LineTo 54 41",        "MoveToEx 50 50", "LineTo 54 41",
                        "MoveToEx 50 50", "LineTo 54 41",        "MoveToEx 50 50", "LineTo 54 40",
                        "MoveToEx 50 50", "LineTo 54 40",        "MoveToEx 50 50", "LineTo 53 40",
                        "MoveToEx 50 50", "LineTo 53 40",        "MoveToEx 50 50", "LineTo 53 40",
                        "MoveToEx 50 50", "LineTo 53 40",        "MoveToEx 50 50", "LineTo 53 40",
                        "MoveToEx 50 50", "LineTo 53 40",        "MoveToEx 50 50", "LineTo 52 40",
                        "MoveToEx 50 50", "LineTo 52 40",        "MoveToEx 50 50", "LineTo 52 40",
                        "MoveToEx 50 50", "LineTo 52 40",        "MoveToEx 50 50", "LineTo 52 40",
                        "MoveToEx 50 50", "LineTo 52 40",        "MoveToEx 50 50", "LineTo 51 40",
                        "MoveToEx 50 50", "LineTo 51 40",        "MoveToEx 50 50", "LineTo 51 40",
                        "MoveToEx 50 50", "LineTo 51 40",        "MoveToEx 50 50", "LineTo 51 40",
                        "MoveToEx 50 50", "LineTo 51 40",        "MoveToEx 50 50", "LineTo 50 40",
                        "MoveToEx 50 50", "LineTo 50 40",        "MoveToEx 50 50", "LineTo 50 40",
                        "MoveToEx 50 50", "LineTo 50 40",        "MoveToEx 50 50", "LineTo 50 40",
                        "MoveToEx 50 50", "LineTo 50 40"}));
}

TEST_F(GaugeDrawing, TheArcIsSpokesFromZeroToTheValueInTheColourOfTheStart) {
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.Value = 1;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 50 25",
                        "MoveToEx 50 50", "LineTo 50 25", "MoveToEx 50 50", "LineTo 50 25",
                        "MoveToEx 50 50", "LineTo 51 25", "MoveToEx 50 50", "LineTo 51 25"}));
}

TEST_F(GaugeDrawing, WithAGradientEachSpokeHasTheColourOfItsPlace) {
  gauge.ShowArc = true;
  gauge.Value = 1;

  EXPECT_EQ(
      drawn(gauge),
      (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 50 25",
                  "SelectPen #c00100 2", "MoveToEx 50 50", "LineTo 50 25", "SelectPen #c10300 2",
                  "MoveToEx 50 50", "LineTo 50 25", "SelectPen #c10400 2", "MoveToEx 50 50",
                  "LineTo 51 25", "SelectPen #c10600 2", "MoveToEx 50 50", "LineTo 51 25"}));
}

TEST_F(GaugeDrawing, AGradientOfTwoColoursHasNoMiddle) {
  gauge.ShowArc = true;
  gauge.Value = 1;
  gauge.Tricolor = false;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 50 25",
                        "SelectPen #bf0100 2", "MoveToEx 50 50", "LineTo 50 25", "MoveToEx 50 50",
                        "LineTo 50 25", "SelectPen #be0200 2", "MoveToEx 50 50", "LineTo 51 25",
                        "MoveToEx 50 50", "LineTo 51 25"}));
}

TEST_F(GaugeDrawing, WithAFadeTheWholeArcHasTheColourOfTheValue) {
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.Fade = true;
  gauge.Value = 1;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c10500 2", "MoveToEx 50 50", "LineTo 50 25",
                        "MoveToEx 50 50", "LineTo 50 25", "MoveToEx 50 50", "LineTo 50 25",
                        "MoveToEx 50 50", "LineTo 51 25", "MoveToEx 50 50", "LineTo 51 25"}));
}

TEST_F(GaugeDrawing, AGradientIsSeenInAFade) {
  gauge.ShowArc = true;
  gauge.Gradient = true;
  gauge.Fade = true;
  gauge.Value = 1;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c10500 2", "SelectPen #c00000 2",
                        "MoveToEx 50 50", "LineTo 50 25", "SelectPen #c00100 2", "MoveToEx 50 50",
                        "LineTo 50 25", "SelectPen #c10300 2", "MoveToEx 50 50", "LineTo 50 25",
                        "SelectPen #c10400 2", "MoveToEx 50 50", "LineTo 51 25",
                        "SelectPen #c10600 2", "MoveToEx 50 50", "LineTo 51 25"}));
}

TEST_F(GaugeDrawing, AnArcOverAPartOfATurnHasItsColoursOverThatPart) {
  gauge.ShowArc = true;
  gauge.Span = 45;
  gauge.Value = 5;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 50 25",
                        "SelectPen #c30b00 2", "MoveToEx 50 50", "LineTo 50 25",
                        "SelectPen #c61700 2", "MoveToEx 50 50", "LineTo 50 25"}));
}

TEST_F(GaugeDrawing, AnArcOver302DegreesHasASpokeForEachDegreeOfTheRoundedAngle) {
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.OffsetAngle = 210;
  gauge.Span = 302;
  gauge.Value = 1;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 37 71",
                        "MoveToEx 50 50", "LineTo 37 71", "MoveToEx 50 50", "LineTo 36 71",
                        "MoveToEx 50 50", "LineTo 36 70"}));
}

TEST_F(GaugeDrawing, TheLowestValueHasNoArc) {
  gauge.ShowArc = true;
  gauge.Value = 0;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6"}));
}

TEST_F(GaugeDrawing, TheLowestValueOfAShiftedScaleHasNoArc) {
  gauge.ShowArc = true;
  gauge.Min = 20;
  gauge.Value = 20;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6"}));
}

TEST_F(GaugeDrawing, WithAZeroLineTheLowestValueHasTheFirstSpoke) {
  gauge.ShowArc = true;
  gauge.ShowZeroLine = true;
  gauge.Value = 0;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 50 25"}));
}

TEST_F(GaugeDrawing, AnArcAgainstTheClockRunsToTheLeft) {
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.Clockwise = false;
  gauge.Value = 1;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 50 25",
                        "MoveToEx 50 50", "LineTo 49 25", "MoveToEx 50 50", "LineTo 49 25",
                        "MoveToEx 50 50", "LineTo 48 25", "MoveToEx 50 50", "LineTo 48 25"}));
}

TEST_F(GaugeDrawing, SpokesBelowARadiusOf17AreOnePixelWide) {
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.Value = 0;
  gauge.ShowZeroLine = true;
  gauge.Radius = 16;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 1", "MoveToEx 50 50", "LineTo 50 34"}));
}

TEST_F(GaugeDrawing, SpokesFromARadiusOf17OnAreTwoPixelsWide) {
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.Value = 0;
  gauge.ShowZeroLine = true;
  gauge.Radius = 17;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 50 33"}));
}

TEST_F(GaugeDrawing, SpokesOfARadiusOf47AreTwoPixelsWide) {
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.Value = 0;
  gauge.ShowZeroLine = true;
  gauge.Radius = 47;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 50 3"}));
}

TEST_F(GaugeDrawing, SpokesOfARadiusOf48AreThreePixelsWide) {
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.Value = 0;
  gauge.ShowZeroLine = true;
  gauge.Radius = 48;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 3", "MoveToEx 50 50", "LineTo 50 2"}));
}

TEST_F(GaugeDrawing, TheBorderOfAWholeTurnIsAHollowEllipse) {
  gauge.ShowBorder = true;
  gauge.BorderColor = 0x302010;
  gauge.BorderWidth = 3;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #102030 3", "SelectBrush none",
                                      "Ellipse 25 25 76 76"}));
}

TEST_F(GaugeDrawing, TheBorderOfAPartOfATurnIsAnArcFromItsEndToItsStart) {
  gauge.ShowBorder = true;
  gauge.OffsetAngle = 210;
  gauge.Span = 302;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1",
                                      "Arc 25 25 76 76 from 61 71 to 38 70"}));
}

TEST_F(GaugeDrawing, TheBorderAgainstTheClockIsAnArcFromItsStartToItsEnd) {
  gauge.ShowBorder = true;
  gauge.OffsetAngle = 210;
  gauge.Span = 302;
  gauge.Clockwise = false;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1",
                                      "Arc 25 25 76 76 from 37 70 to 26 50"}));
}

TEST_F(GaugeDrawing, SpokesEndAtTheMiddleOfABorderOfOnePixel) {
  gauge.ShowBorder = true;
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.Value = 0;
  gauge.ShowZeroLine = true;
  gauge.BorderWidth = 1;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 50 26",
                        "SelectPen #000000 1", "SelectBrush none", "Ellipse 25 25 76 76"}));
}

TEST_F(GaugeDrawing, SpokesEndAtTheMiddleOfABorderOfFourPixels) {
  gauge.ShowBorder = true;
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.Value = 0;
  gauge.ShowZeroLine = true;
  gauge.BorderWidth = 4;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 50 27",
                        "SelectPen #000000 4", "SelectBrush none", "Ellipse 25 25 76 76"}));
}

TEST_F(GaugeDrawing, TheNeedleIsALineToTheValueInItsColour) {
  gauge.ShowNeedle = true;
  gauge.ShowArc = true;
  gauge.Gradient = false;
  gauge.NeedleColor = 0x030201;
  gauge.Value = 0;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #010203 2", "MoveToEx 50 50", "LineTo 50 25"}));
}

TEST_F(GaugeDrawing, TheNeedleStandsAtTheRoundedAngle) {
  gauge.ShowNeedle = true;
  gauge.Gradient = false;
  gauge.OffsetAngle = 210;
  gauge.Span = 302;
  gauge.Value = 88;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #23221e 2", "MoveToEx 50 50", "LineTo 72 60"}));
}

TEST_F(GaugeDrawing, WithoutAnArcTheNeedleOfAGradientHasTheColourOfTheValue) {
  gauge.ShowNeedle = true;
  gauge.Value = 25;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #e08000 2", "MoveToEx 50 50", "LineTo 75 49"}));
}

TEST_F(GaugeDrawing, WithoutAnArcTheNeedleOfAFadeHasTheColourOfTheValue) {
  gauge.ShowNeedle = true;
  gauge.Gradient = false;
  gauge.Fade = true;
  gauge.Value = 25;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #e08000 2", "MoveToEx 50 50", "LineTo 75 49"}));
}

TEST_F(GaugeDrawing, TheNeedleLiesOnTheArc) {
  gauge.ShowNeedle = true;
  gauge.ShowArc = true;
  gauge.Value = 1;

  EXPECT_EQ(
      drawn(gauge),
      (Operations{"Cls #ecebe6", "SelectPen #c00000 2", "MoveToEx 50 50", "LineTo 50 25",
                  "SelectPen #c00100 2", "MoveToEx 50 50", "LineTo 50 25", "SelectPen #c10300 2",
                  "MoveToEx 50 50", "LineTo 50 25", "SelectPen #c10400 2", "MoveToEx 50 50",
                  "LineTo 51 25", "SelectPen #c10600 2", "MoveToEx 50 50", "LineTo 51 25",
                  "SelectPen #23221e 2", "MoveToEx 50 50", "LineTo 51 25"}));
}

TEST_F(GaugeDrawing, TheValueIsWrittenInTheMiddle) {
  gauge.ShowValue = true;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectFont ambient", "SetTextColor #ffffff",
                                      "TextOutA 44 44 \"50\""}));
}

TEST_F(GaugeDrawing, TheValueIsWrittenBesideTheMiddle) {
  gauge.ShowValue = true;
  gauge.Value = 7;
  gauge.TextOffsetX = 10;
  gauge.TextOffsetY = -6;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectFont ambient", "SetTextColor #ffffff",
                                      "TextOutA 57 38 \"7\""}));
}

TEST_F(GaugeDrawing, AShadowIsWrittenBeforeTheText) {
  gauge.ShowValue = true;
  gauge.TextShadow = true;
  gauge.TextShadowXOffset = 2;
  gauge.TextShadowYOffset = 3;
  gauge.TextColor = 0x030201;
  gauge.TextShadowColor = 0x060504;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectFont ambient", "SetTextColor #040506",
                        "TextOutA 46 47 \"50\"", "SetTextColor #010203", "TextOutA 44 44 \"50\""}));
}

TEST_F(GaugeDrawing, APercentageIsTheWholeOneOfTheScale) {
  gauge.ShowValue = true;
  gauge.ShowValueAsPercent = true;
  gauge.Min = 20;
  gauge.Max = 220;
  gauge.Value = 45;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectFont ambient", "SetTextColor #ffffff",
                                      "TextOutA 41 44 \"13%\""}));
}

TEST_F(GaugeDrawing, AllPartsAreDrawnInTheirOrder) {
  gauge.ShowCircle = true;
  gauge.CircleColor = 0xFF0000;
  gauge.ShowArc = true;
  gauge.ShowBorder = true;
  gauge.TickStyle = kLineTicks;
  gauge.TickFrequency = 50;
  gauge.ShowNeedle = true;
  gauge.ShowValue = true;
  gauge.Value = 1;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6",          "SelectPen #0000ff 1", "SelectBrush #0000ff",
                        "Ellipse 25 25 76 76",  "SelectPen #c00000 2", "MoveToEx 50 50",
                        "LineTo 50 26",         "SelectPen #c00100 2", "MoveToEx 50 50",
                        "LineTo 50 26",         "SelectPen #c10300 2", "MoveToEx 50 50",
                        "LineTo 50 26",         "SelectPen #c10400 2", "MoveToEx 50 50",
                        "LineTo 51 26",         "SelectPen #c10600 2", "MoveToEx 50 50",
                        "LineTo 51 26",         "SelectPen #000000 1", "SelectBrush none",
                        "Ellipse 25 25 76 76",  "MoveToEx 50 26",      "LineTo 50 30",
                        "MoveToEx 50 74",       "LineTo 50 70",        "SelectPen #23221e 2",
                        "MoveToEx 50 50",       "LineTo 51 26",        "SelectFont ambient",
                        "SetTextColor #ffffff", "TextOutA 47 44 \"1\""}));
}

}  // namespace
}  // namespace veltrin
