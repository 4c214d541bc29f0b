// SPDX-License-Identifier: GPL-3.0-or-later
// How the dial gauge draws the ticks of its scale.
#include <gtest/gtest.h>

#include "gauge_text.h"

namespace veltrin {
namespace {

// A gauge of the default place, with a radius of 25 pixels around (50, 50), of whose face
// nothing is drawn yet.
class GaugeTicks : public testing::Test {
 protected:
  GaugeTicks() {
    gauge.ShowCircle = false;
    gauge.ShowArc = false;
    gauge.ShowBorder = false;
  }

  bkCProg gauge;
};

TEST_F(GaugeTicks, LineTicksStandInsideTheRadius) {
  gauge.TickStyle = kLineTicks;
  gauge.TickPosition = kTicksInside;
  gauge.TickFrequency = 50;
  gauge.TickSize = 4;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush none", "MoveToEx 50 25",
                        "LineTo 50 29", "MoveToEx 50 75", "LineTo 50 71"}));
}

TEST_F(GaugeTicks, LineTicksStandOutsideIt) {
  gauge.TickStyle = kLineTicks;
  gauge.TickPosition = kTicksOutside;
  gauge.TickFrequency = 50;
  gauge.TickSize = 4;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush none", "MoveToEx 50 25",
                        "LineTo 50 21", "MoveToEx 50 75", "LineTo 50 79"}));
}

TEST_F(GaugeTicks, LineTicksStandAcrossIt) {
  gauge.TickStyle = kLineTicks;
  gauge.TickPosition = kTicksAcross;
  gauge.TickFrequency = 50;
  gauge.TickSize = 5;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush none", "MoveToEx 50 27",
                        "LineTo 50 22", "MoveToEx 50 72", "LineTo 50 77"}));
}

TEST_F(GaugeTicks, FilledDotsStandInsideTheRadius) {
  gauge.TickStyle = kFilledDots;
  gauge.TickPosition = kTicksInside;
  gauge.TickFrequency = 50;
  gauge.TickSize = 4;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush #000000",
                                      "Ellipse 48 25 52 29", "Ellipse 48 71 52 75"}));
}

TEST_F(GaugeTicks, FilledDotsStandOutsideIt) {
  gauge.TickStyle = kFilledDots;
  gauge.TickPosition = kTicksOutside;
  gauge.TickFrequency = 50;
  gauge.TickSize = 4;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush #000000",
                                      "Ellipse 48 21 52 25", "Ellipse 48 75 52 79"}));
}

TEST_F(GaugeTicks, FilledDotsStandAcrossIt) {
  gauge.TickStyle = kFilledDots;
  gauge.TickPosition = kTicksAcross;
  gauge.TickFrequency = 50;
  gauge.TickSize = 5;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush #000000",
                                      "Ellipse 48 23 53 28", "Ellipse 48 73 53 78"}));
}

TEST_F(GaugeTicks, HollowDotsStandInsideTheRadius) {
  gauge.TickStyle = kHollowDots;
  gauge.TickPosition = kTicksInside;
  gauge.TickFrequency = 50;
  gauge.TickSize = 4;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush none",
                                      "Ellipse 48 25 52 29", "Ellipse 48 71 52 75"}));
}

TEST_F(GaugeTicks, HollowDotsStandOutsideIt) {
  gauge.TickStyle = kHollowDots;
  gauge.TickPosition = kTicksOutside;
  gauge.TickFrequency = 50;
  gauge.TickSize = 4;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush none",
                                      "Ellipse 48 21 52 25", "Ellipse 48 75 52 79"}));
}

TEST_F(GaugeTicks, HollowDotsStandAcrossIt) {
  gauge.TickStyle = kHollowDots;
  gauge.TickPosition = kTicksAcross;
  gauge.TickFrequency = 50;
  gauge.TickSize = 5;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush none",
                                      "Ellipse 48 23 53 28", "Ellipse 48 73 53 78"}));
}

TEST_F(GaugeTicks, FilledSquaresStandInsideTheRadius) {
  gauge.TickStyle = kFilledSquares;
  gauge.TickPosition = kTicksInside;
  gauge.TickFrequency = 50;
  gauge.TickSize = 4;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush #000000",
                                      "Rectangle 48 25 52 29", "Rectangle 48 71 52 75"}));
}

TEST_F(GaugeTicks, FilledSquaresStandOutsideIt) {
  gauge.TickStyle = kFilledSquares;
  gauge.TickPosition = kTicksOutside;
  gauge.TickFrequency = 50;
  gauge.TickSize = 4;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush #000000",
                                      "Rectangle 48 21 52 25", "Rectangle 48 75 52 79"}));
}

TEST_F(GaugeTicks, FilledSquaresStandAcrossIt) {
  gauge.TickStyle = kFilledSquares;
  gauge.TickPosition = kTicksAcross;
  gauge.TickFrequency = 50;
  gauge.TickSize = 5;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush #000000",
                                      "Rectangle 48 23 53 28", "Rectangle 48 73 53 78"}));
}

TEST_F(GaugeTicks, HollowSquaresStandInsideTheRadius) {
  gauge.TickStyle = kHollowSquares;
  gauge.TickPosition = kTicksInside;
  gauge.TickFrequency = 50;
  gauge.TickSize = 4;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush none",
                                      "Rectangle 48 25 52 29", "Rectangle 48 71 52 75"}));
}

TEST_F(GaugeTicks, HollowSquaresStandOutsideIt) {
  gauge.TickStyle = kHollowSquares;
  gauge.TickPosition = kTicksOutside;
  gauge.TickFrequency = 50;
  gauge.TickSize = 4;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush none",
                                      "Rectangle 48 21 52 25", "Rectangle 48 75 52 79"}));
}

TEST_F(GaugeTicks, HollowSquaresStandAcrossIt) {
  gauge.TickStyle = kHollowSquares;
  gauge.TickPosition = kTicksAcross;
  gauge.TickFrequency = 50;
  gauge.TickSize = 5;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush none",
                                      "Rectangle 48 23 53 28", "Rectangle 48 73 53 78"}));
}

TEST_F(GaugeTicks, TicksOver302DegreesReachFromOneEndToTheOther) {
  gauge.TickStyle = kLineTicks;
  gauge.TickFrequency = 50;
  gauge.OffsetAngle = 210;
  gauge.Span = 302;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #000000 1", "SelectBrush none",
                                      "MoveToEx 37 71", "LineTo 39 68", "MoveToEx 50 25",
                                      "LineTo 50 29", "MoveToEx 61 72", "LineTo 59 68"}));
}

TEST_F(GaugeTicks, TicksAreOfTheirColourAndWidth) {
  gauge.TickStyle = kFilledSquares;
  gauge.TickFrequency = 50;
  gauge.TickWidth = 3;
  gauge.TickColor = 0x030201;

  EXPECT_EQ(drawn(gauge), (Operations{"Cls #ecebe6", "SelectPen #010203 3", "SelectBrush #010203",
                                      "Rectangle 48 25 52 29", "Rectangle 48 71 52 75"}));
}

TEST_F(GaugeTicks, TicksBeginWithinTheBorder) {
  gauge.TickStyle = kLineTicks;
  gauge.TickFrequency = 50;
  gauge.ShowBorder = true;
  gauge.BorderWidth = 4;

  EXPECT_EQ(drawn(gauge),
            (Operations{"Cls #ecebe6", "SelectPen #000000 4", "SelectBrush none",
                        "Ellipse 25 25 76 76", "SelectPen #000000 1", "MoveToEx 50 27",
                        "LineTo 50 31", "MoveToEx 50 73", "LineTo 50 69"}));
}

}  // namespace
}  // namespace veltrin
