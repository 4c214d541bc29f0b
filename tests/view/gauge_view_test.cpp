// SPDX-License-Identifier: GPL-3.0-or-later
// The face of a dial gauge on the screen.
#include <numbers>

#include "gauge_fixture.h"

namespace veltrin {
namespace {

TEST_F(GaugeViewTest, TheGroundReachesEveryEdgeAtEveryScale) {
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    const QPoint last(image.width() - 1, image.height() - 1);
    EXPECT_EQ(image.pixelColor(0, 0), kGround) << scale;
    EXPECT_EQ(image.pixelColor(last), kGround) << scale;
    EXPECT_EQ(image.pixelColor(0, last.y()), kGround) << scale;
    EXPECT_EQ(image.pixelColor(last.x(), 0), kGround) << scale;
  }
}

TEST_F(GaugeViewTest, TheArcCoversItsPartOfTheCircleInItsColoursAtEveryScale) {
  gauge.Value = 75;
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    const QColor colour = colourAt(image, 60, 20);  // 18 degrees of 360
    EXPECT_NEAR(colour.red(), 199, 2) << scale;
    EXPECT_NEAR(colour.green(), 28, 4) << scale;
    EXPECT_EQ(colourAt(image, 30, 30), kWhite) << scale;
    EXPECT_GT(colourAt(image, 30, 70).green(), 200) << scale;
  }
}

TEST_F(GaugeViewTest, TheBorderLiesOnTheEdgeOfTheDialAndNothingBeyondIt) {
  gauge.Value = 100;
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    for (const QPoint place : {QPoint(50, 1), QPoint(99, 50), QPoint(50, 99), QPoint(1, 50)}) {
      EXPECT_TRUE(isNear(colourAt(image, place.x(), place.y()), kPurple))
          << scale << " " << place.x();
    }
    const int middle = static_cast<int>(50.5 * scale);
    EXPECT_EQ(image.pixelColor(middle, 0), kGround) << scale;
    EXPECT_EQ(image.pixelColor(image.width() - 1, middle), kGround) << scale;
  }
}

// How far the spokes miss the border on each side differs by less than a pixel.
TEST_F(GaugeViewTest, SpokesFillTheDialToItsBorderAllAround) {
  gauge.Value = 100;
  gauge.Gradient = false;
  const QImage image = atScale(2);
  for (int degrees = 0; degrees < 360; ++degrees) {
    const double turn = degrees * std::numbers::pi / 180;
    const QColor colour = colourAt(image, 50 + 47.5 * std::sin(turn), 50 - 47.5 * std::cos(turn));
    EXPECT_EQ(colour, QColor(192, 0, 0)) << degrees;
  }
}

TEST_F(GaugeViewTest, AnUprightNeedleHasSharpEdgesAtEveryScale) {
  gauge.ShowArc = false;
  gauge.ShowCircle = false;
  gauge.ShowBorder = false;
  gauge.Gradient = false;
  gauge.ShowNeedle = true;
  gauge.NeedleColor = 0xFF;
  gauge.Value = 0;
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    int red = 0;
    for (int x = 0; x < image.width(); ++x) {
      const QColor colour = image.pixelColor(x, static_cast<int>(25 * scale));
      if (colour == QColor(255, 0, 0)) {
        ++red;
      } else {
        EXPECT_EQ(colour, kGround) << scale << " " << x;
      }
    }
    EXPECT_EQ(red, std::lround(3 * scale)) << scale;
  }
}

// The tick at the top, 10 pixels and half the pen around (50, 6).
TEST_F(GaugeViewTest, SquareTicksHaveSharpEdgesAtEveryScale) {
  gauge.ShowArc = false;
  gauge.ShowCircle = false;
  gauge.ShowBorder = false;
  gauge.TickStyle = kFilledSquares;
  gauge.TickFrequency = 50;
  gauge.TickSize = 10;
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    int black = 0;
    for (int x = 0; x < image.width(); ++x) {
      const QColor colour = image.pixelColor(x, static_cast<int>(6 * scale));
      if (colour == QColor(Qt::black)) {
        ++black;
      } else {
        EXPECT_EQ(colour, kGround) << scale << " " << x;
      }
    }
    EXPECT_NEAR(black, 10 * scale, 1) << scale;
  }
}

TEST_F(GaugeViewTest, HollowTicksShowWhatLiesBehind) {
  gauge.ShowArc = false;
  gauge.ShowBorder = false;
  gauge.TickSize = 20;
  gauge.TickStyle = kHollowDots;
  EXPECT_EQ(colourAt(atScale(1), 49, 11), kWhite);
  gauge.TickStyle = kHollowSquares;
  EXPECT_EQ(colourAt(atScale(1), 49, 11), kWhite);
  gauge.TickStyle = kFilledDots;
  EXPECT_EQ(colourAt(atScale(1), 49, 11), QColor(Qt::black));
}

TEST_F(GaugeViewTest, ABorderOverAPartOfATurnLeavesTheRestOpen) {
  gauge.Span = 180;
  gauge.Value = 0;
  const QImage right = atScale(1);
  EXPECT_TRUE(isNear(colourAt(right, 99, 49), kPurple));
  EXPECT_EQ(colourAt(right, 1, 49), kGround);

  gauge.Clockwise = false;
  const QImage left = atScale(1);
  EXPECT_EQ(colourAt(left, 99, 49), kGround);
  EXPECT_TRUE(isNear(colourAt(left, 1, 49), kPurple));
}

TEST_F(GaugeViewTest, TheTextStandsInTheMiddleInItsColour) {
  gauge.ShowArc = false;
  gauge.ShowValue = true;
  gauge.TextColor = 0;
  gauge.Value = 88;
  const QImage image = atScale(2);
  QRect ink;
  for (int y = 20; y < 180; ++y) {
    for (int x = 20; x < 180; ++x) {
      if (image.pixelColor(x, y) == QColor(Qt::black)) ink |= QRect(x, y, 1, 1);
    }
  }
  EXPECT_GT(ink.width(), 10);
  EXPECT_NEAR(ink.center().x(), 101, 3);
  EXPECT_NEAR(ink.center().y(), 101, 4);
}

TEST_F(GaugeViewTest, OtherLettersOfTheWindowAreMeasuredAnew) {
  gauge.ShowValue = true;
  const auto before = std::get<TextOutA>(gauge.operations().back());
  QFont larger = view.font();
  larger.setPointSize(30);
  view.setFont(larger);
  const auto after = std::get<TextOutA>(gauge.operations().back());
  EXPECT_LT(after.x, before.x - 10);
  EXPECT_LT(after.y, before.y - 5);
}

TEST_F(GaugeViewTest, AFontOfTheGaugesOwnIsTaken) {
  gauge.ShowValue = true;
  const auto before = std::get<TextOutA>(gauge.operations().back());
  gauge.Font = DeviceFont{"DejaVu Sans Mono", 30, true, true};
  const auto after = std::get<TextOutA>(gauge.operations().back());
  EXPECT_LT(after.x, before.x - 10);
}

TEST_F(GaugeViewTest, LettersAreThoseAroundButForWhatTheFontNames) {
  QFont around("DejaVu Sans", 9);
  EXPECT_EQ(lettersOf(DeviceFont{}, around), around);
  const QFont own = lettersOf(DeviceFont{"DejaVu Serif", 12, true, true}, around);
  EXPECT_EQ(own.family(), "DejaVu Serif");
  EXPECT_EQ(own.pointSizeF(), 12);
  EXPECT_TRUE(own.bold());
  EXPECT_TRUE(own.italic());
}

}  // namespace
}  // namespace veltrin
