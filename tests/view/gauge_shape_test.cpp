// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures of a dial gauge on the screen, its edge and its shape.
#include "gauge_fixture.h"

namespace veltrin {
namespace {

using GaugeShape = GaugeViewTest;

TEST_F(GaugeShape, APictureFillsTheControlBehindTheDial) {
  gauge.ShowCircle = false;
  gauge.Value = 0;
  gauge.Picture = kHalves;
  const QImage image = atScale(1);
  EXPECT_EQ(colourAt(image, 0, 0), QColor(255, 0, 0));
  EXPECT_EQ(colourAt(image, 100, 100), QColor(0, 255, 255));
  EXPECT_TRUE(isNear(colourAt(image, 50, 1), kPurple));
}

TEST_F(GaugeShape, APictureThatIsNotThereLeavesTheGround) {
  gauge.Picture = DevicePicture{"none", nullptr, 40, 40};
  EXPECT_EQ(colourAt(atScale(1), 0, 0), kGround);
}

TEST_F(GaugeShape, TheImageOfAGaugeIsAPictureForAnother) {
  bkCProg other;
  other.BackColor = 0x0000FF;
  other.ShowBorder = false;
  other.ShowArc = false;
  gauge.ShowCircle = false;
  gauge.Value = 0;
  gauge.Picture = other.Image();
  EXPECT_EQ(colourAt(atScale(2), 0, 0), QColor(255, 0, 0));
}

TEST_F(GaugeShape, AGaugeThatTakesItsPicturesSizeIsShownInIt) {
  gauge.Picture = kHalves;
  gauge.AutoSizeToPicture();
  EXPECT_EQ(view.size(), QSize(40, 40));
  EXPECT_EQ(gauge.width(), 40);
  EXPECT_EQ(gauge.XCenter, 20);
}

TEST_F(GaugeShape, ASunkenEdgeLiesAroundTheDialAndNotOnIt) {
  gauge.Inset = true;
  EXPECT_EQ(gauge.width(), 99);
  const QImage image = atScale(1);
  EXPECT_EQ(colourAt(image, 30, 0), view.palette().color(QPalette::Dark));
  EXPECT_EQ(colourAt(image, 30, 100), view.palette().color(QPalette::Light));
  EXPECT_TRUE(isNear(colourAt(image, 50, 2), kPurple));

  gauge.Inset = false;
  EXPECT_EQ(gauge.width(), 101);
}

TEST_F(GaugeShape, AnAutoMaskLeavesTheWindowAroundTheDial) {
  gauge.AutoMask = true;
  show();
  for (const double scale : kScales) {
    const QImage image = atScale(scale);
    EXPECT_EQ(colourAt(image, 0, 0), QColor(Qt::blue)) << scale;
    EXPECT_TRUE(isNear(colourAt(image, 50, 1), kPurple)) << scale;
    EXPECT_EQ(colourAt(image, 30, 30), kWhite) << scale;
  }
}

TEST_F(GaugeShape, TheMouseGoesPastWhatTheMaskTakesAway) {
  gauge.AutoMask = true;
  show();
  EXPECT_FALSE(view.mask().contains(QPoint(3, 3)));
  EXPECT_TRUE(view.mask().contains(QPoint(50, 50)));

  gauge.AutoMask = false;
  settle();
  EXPECT_TRUE(view.mask().isEmpty());
}

TEST_F(GaugeShape, AMaskPictureTakesAwayWhatHasItsColour) {
  gauge.MaskPicture = kHalves;
  gauge.MaskColor = 0xFFFF00;
  gauge.UseMask = true;
  const QImage image = atScale(1);
  EXPECT_EQ(colourAt(image, 0, 0), kGround);
  EXPECT_EQ(colourAt(image, 100, 100), QColor(Qt::blue));
  EXPECT_EQ(colourAt(image, 70, 50), QColor(Qt::blue));
}

}  // namespace
}  // namespace veltrin
