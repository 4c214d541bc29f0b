// SPDX-License-Identifier: GPL-3.0-or-later
// What a container keeps of the dial gauge, and the pictures behind and around it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "gauge_text.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const DevicePicture kFace{"face", nullptr, 80, 60};

std::vector<std::string> namesIn(const PropertyBag& bag) {
  std::vector<std::string> names;
  for (const auto& [name, value] : bag.values()) names.push_back(name);
  return names;
}

PropertyBag stored(const bkCProg& gauge, double scale = bkCProg::kTwipsOfPixel) {
  PropertyBag bag;
  gauge.WriteProperties(bag, scale);
  return bag;
}

// Gives every property another value than its default.
void changeAll(bkCProg& gauge) {
  gauge.Max = 500;
  gauge.Min = -500;
  gauge.Value = 77;
  gauge.BackColor = 0x95B7BD;
  gauge.StartColor = 1;
  gauge.MidColor = 2;
  gauge.EndColor = 3;
  gauge.CircleColor = 4;
  gauge.BorderColor = 5;
  gauge.TextColor = 6;
  gauge.NeedleColor = 7;
  gauge.TextShadowColor = 8;
  gauge.TickColor = 9;
  gauge.MaskColor = 10;
  gauge.Tricolor = false;
  gauge.Fade = true;
  gauge.ShowBorder = false;
  gauge.Clockwise = false;
  gauge.ShowZeroLine = true;
  gauge.Gradient = false;
  gauge.ShowValue = true;
  gauge.TextShadow = true;
  gauge.AutoSize = false;
  gauge.ShowNeedle = true;
  gauge.ShowArc = false;
  gauge.ShowCircle = false;
  gauge.ShowValueAsPercent = true;
  gauge.OffsetAngle = 210;
  gauge.Span = 302;
  gauge.BorderWidth = 2;
  gauge.TickSize = 6;
  gauge.TickFrequency = 2.5F;
  gauge.TickWidth = 3;
  gauge.XCenter = 61;
  gauge.YCenter = 62;
  gauge.Radius = 32;
  gauge.TextOffsetX = -3;
  gauge.TextOffsetY = 4;
  gauge.TextShadowXOffset = 2;
  gauge.TextShadowYOffset = -2;
  gauge.TickStyle = kHollowDots;
  gauge.TickPosition = kTicksAcross;
  gauge.Font = DeviceFont{"Liberation Serif", 12, true, false};
  gauge.Picture = kFace;
  gauge.MaskPicture = DevicePicture{"mask", nullptr, 10, 20};
  gauge.Inset = true;
  gauge.UseMask = true;
}

TEST(GaugeStorage, AGaugeOfDefaultsStoresNothing) {
  const bkCProg gauge;
  EXPECT_THAT(namesIn(stored(gauge)), IsEmpty());
}

TEST(GaugeStorage, ThePropertiesStandInTheirOrder) {
  bkCProg gauge;
  changeAll(gauge);
  EXPECT_THAT(namesIn(stored(gauge)),
              ElementsAre("Max", "Min", "Value", "BackColor", "StartColor", "MidColor", "EndColor",
                          "CircleColor", "BorderColor", "TextColor", "NeedleColor",
                          "TextShadowColor", "TickColor", "MaskColor", "Tricolor", "Fade", "Border",
                          "Clockwise", "ShowZeroLine", "Gradient", "ShowValue", "TextShadow",
                          "AutoSize", "ShowNeedle", "ShowArc", "ShowCircle", "ShowValueAsPercent",
                          "OffsetAngle", "Span", "BorderWidth", "TickSize", "TickFrequency",
                          "TickWidth", "XCenter", "YCenter", "Radius", "TextOffsetX", "TextOffsetY",
                          "TextShadowXOffset", "TextShadowYOffset", "TickStyle", "TickPosition",
                          "Font", "Picture", "MaskPicture", "Inset", "UseMask"));
}

TEST(GaugeStorage, WhatWasStoredComesBack) {
  bkCProg gauge;
  changeAll(gauge);
  const PropertyBag bag = stored(gauge);
  ASSERT_EQ(bag.values().size(), 47U);

  bkCProg other;
  other.ReadProperties(bag);

  EXPECT_EQ(stored(other).values(), bag.values());
  EXPECT_EQ(drawn(other), drawn(gauge));
}

TEST(GaugeStorage, AnEmptyBagBringsTheDefaultsBack) {
  bkCProg gauge;
  changeAll(gauge);

  gauge.ReadProperties(PropertyBag());

  EXPECT_THAT(namesIn(stored(gauge)), IsEmpty());
  EXPECT_EQ(drawn(gauge), drawn(bkCProg()));
}

TEST(GaugeStorage, LengthsAreStoredInUnitsOfTheDisplay) {
  bkCProg gauge;
  gauge.XCenter = 61;
  gauge.YCenter = 62;
  gauge.Radius = 32;
  gauge.TextOffsetX = -3;
  gauge.TextOffsetY = 4;
  gauge.TextShadowXOffset = 2;
  gauge.TextShadowYOffset = -2;

  const PropertyBag bag = stored(gauge);

  EXPECT_EQ(bag.ReadProperty<double>("XCenter"), 915);
  EXPECT_EQ(bag.ReadProperty<double>("YCenter"), 930);
  EXPECT_EQ(bag.ReadProperty<double>("Radius"), 480);
  EXPECT_EQ(bag.ReadProperty<double>("TextOffsetX"), -45);
  EXPECT_EQ(bag.ReadProperty<double>("TextOffsetY"), 60);
  EXPECT_EQ(bag.ReadProperty<double>("TextShadowXOffset"), 30);
  EXPECT_EQ(bag.ReadProperty<double>("TextShadowYOffset"), -30);
}

TEST(GaugeStorage, LengthsGrowWithTheNumberOfPixelsOfADisplay) {
  bkCProg gauge;
  gauge.Radius = 32;

  bkCProg finer;
  finer.ReadProperties(stored(gauge, 15), 7.5);

  EXPECT_EQ(finer.Radius, 64);
}

TEST(GaugeStorage, OtherNumbersAreStoredAsTheyAre) {
  bkCProg gauge;
  gauge.BorderWidth = 3;
  gauge.TickSize = 6;
  gauge.TickFrequency = 2.5F;

  const PropertyBag bag = stored(gauge);

  EXPECT_EQ(bag.ReadProperty<std::int16_t>("BorderWidth"), 3);
  EXPECT_EQ(bag.ReadProperty<std::int16_t>("TickSize"), 6);
  EXPECT_EQ(bag.ReadProperty<float>("TickFrequency"), 2.5F);
}

TEST(GaugeStorage, TheLimitsHoldForWhatIsStored) {
  PropertyBag bag;
  bag.WriteProperty("Max", std::int32_t{40});
  bag.WriteProperty("Span", std::int32_t{0});
  bag.WriteProperty("OffsetAngle", std::int32_t{-90});
  bkCProg gauge;

  gauge.ReadProperties(bag);

  EXPECT_EQ(gauge.Value, 40);
  EXPECT_EQ(gauge.Span, 45);
  EXPECT_EQ(gauge.OffsetAngle, 270);
}

TEST(GaugeStorage, AValueOfAnotherKindIsNone) {
  PropertyBag bag;
  bag.WriteProperty("Max", true);
  bag.WriteProperty("Radius", std::int32_t{480});
  bkCProg gauge;

  gauge.ReadProperties(bag);

  EXPECT_EQ(gauge.Max, 100);
  EXPECT_EQ(gauge.Radius, 25);
}

TEST(GaugeStorage, ALengthThatNoPropertyCanHoldIsNone) {
  PropertyBag bag;
  bag.WriteProperty("Radius", 1e300);
  bag.WriteProperty("TextShadowXOffset", 40000.0 * 15);
  bag.WriteProperty("TextShadowYOffset", 32767.0 * 15);
  bkCProg gauge;

  gauge.ReadProperties(bag);

  EXPECT_EQ(gauge.Radius, 25);
  EXPECT_EQ(gauge.TextShadowXOffset, 1);
  EXPECT_EQ(gauge.TextShadowYOffset, 32767);
}

TEST(GaugeStorage, AReadTranslatesTheColoursOfTheScale) {
  PropertyBag bag;
  bag.WriteProperty("StartColor", ColourCode{0x010203});
  bkCProg gauge;

  gauge.ReadProperties(bag);

  EXPECT_EQ(gauge.ColorAt(0), (Colour{3, 2, 1}));
}

TEST(GaugeStorage, AReadIsDrawnAndMarksNothing) {
  PropertyBag bag;
  bag.WriteProperty("ShowNeedle", true);
  bkCProg gauge;
  int marks = 0;
  gauge.propertyChanged = [&marks](std::string_view) { ++marks; };

  gauge.ReadProperties(bag);

  EXPECT_EQ(drawn(gauge).back(), "LineTo 50 74");
  EXPECT_EQ(marks, 0);
}

TEST(PropertyBag, AValueThatIsWrittenAgainTakesItsPlace) {
  PropertyBag bag;
  bag.WriteProperty("Max", std::int32_t{1});
  bag.WriteProperty("Min", std::int32_t{2});
  bag.WriteProperty("Max", std::int32_t{3});

  EXPECT_THAT(namesIn(bag), ElementsAre("Max", "Min"));
  EXPECT_EQ(bag.ReadProperty<std::int32_t>("Max"), 3);
}

// --- Pictures ---

class GaugePictures : public testing::Test {
 protected:
  GaugePictures() {
    gauge.ShowCircle = false;
    gauge.ShowArc = false;
    gauge.ShowBorder = false;
  }

  bkCProg gauge;
};

TEST_F(GaugePictures, APictureIsStretchedToTheControlBehindTheGauge) {
  gauge.Picture = kFace;
  EXPECT_THAT(drawn(gauge),
              ElementsAre("Cls #ecebe6", "SetStretchBltMode 4",
                          "StretchBlt 0 0 100 100 face 80 60 0XCC0020", "SetStretchBltMode 1"));
}

TEST_F(GaugePictures, APictureOfTheControlsWidthAloneIsStretched) {
  gauge.Picture = kFace;
  gauge.resize(80, 61);
  EXPECT_THAT(drawn(gauge),
              ElementsAre("Cls #ecebe6", "SetStretchBltMode 4",
                          "StretchBlt 0 0 80 61 face 80 60 0XCC0020", "SetStretchBltMode 1"));
}

TEST_F(GaugePictures, APictureOfTheControlsSizeIsDrawnAsItIs) {
  gauge.Picture = kFace;
  gauge.resize(80, 60);
  EXPECT_THAT(drawn(gauge), ElementsAre("Cls #ecebe6", "StretchBlt 0 0 80 60 face 80 60 0XCC0020"));
}

TEST_F(GaugePictures, AutoSizeToPictureGivesTheControlThePicturesSize) {
  gauge.Picture = kFace;
  gauge.AutoSizeToPicture();
  EXPECT_EQ(gauge.width(), 80);
  EXPECT_EQ(gauge.height(), 60);
  EXPECT_EQ(gauge.XCenter, 40);
  EXPECT_THAT(drawn(gauge), ElementsAre("Cls #ecebe6", "StretchBlt 0 0 80 60 face 80 60 0XCC0020"));
}

TEST_F(GaugePictures, AutoSizeToPictureWithoutAPictureDoesNothing) {
  gauge.AutoSizeToPicture();
  EXPECT_EQ(gauge.width(), 100);
  EXPECT_EQ(gauge.XCenter, 50);
  EXPECT_EQ(gauge.Radius, 25);
}

TEST_F(GaugePictures, TheImageIsWhatTheGaugeShowsInItsSize) {
  gauge.resize(80, 60);
  const DevicePicture image = gauge.Image();
  ASSERT_NE(image.drawing, nullptr);
  EXPECT_EQ(image.width, 80);
  EXPECT_EQ(image.height, 60);
  EXPECT_EQ(image.drawing->width, 80);
  EXPECT_EQ(image.drawing->height, 60);
  EXPECT_EQ(image.drawing->operations, gauge.operations());
}

// --- Masks ---

TEST(GaugeMask, AGaugeIsSquareAtFirst) {
  const bkCProg gauge;
  EXPECT_FALSE(gauge.isShaped());
}

TEST(GaugeMask, AMaskPictureShapesTheGaugeWhenItIsUsed) {
  bkCProg gauge;
  gauge.MaskPicture = kFace;
  EXPECT_FALSE(gauge.isShaped());
  gauge.UseMask = true;
  EXPECT_TRUE(gauge.isShaped());
}

TEST(GaugeMask, WithoutAMaskPictureThereIsNoShape) {
  bkCProg gauge;
  gauge.UseMask = true;
  EXPECT_FALSE(gauge.isShaped());
}

TEST(GaugeMask, AnAutoMaskIsTheFaceWithoutItsGround) {
  bkCProg gauge;
  gauge.BackColor = 0x95B7BD;
  gauge.AutoMask = true;

  EXPECT_TRUE(gauge.isShaped());
  EXPECT_EQ(gauge.MaskColor, 0x95B7BDU);
  ASSERT_NE(gauge.MaskPicture.get().drawing, nullptr);
  EXPECT_EQ(gauge.MaskPicture.get().drawing->operations, gauge.operations());
}

TEST(GaugeMask, AnAutoMaskFollowsTheFace) {
  bkCProg gauge;
  gauge.AutoMask = true;
  gauge.Value = 70;
  EXPECT_EQ(gauge.MaskPicture.get().drawing->operations, gauge.operations());
}

TEST(GaugeMask, AnAutoMaskThatComesBackIsOfTheFaceOfThen) {
  bkCProg gauge;
  gauge.AutoMask = true;
  gauge.AutoMask = false;
  gauge.Value = 70;
  gauge.AutoMask = true;
  EXPECT_EQ(gauge.MaskPicture.get().drawing->operations, gauge.operations());
}

TEST(GaugeMask, AnAutoMaskTakesThePlaceOfAnotherMaskAndItsColour) {
  bkCProg gauge;
  bkCProg other;
  other.Value = 10;
  gauge.BackColor = 0x95B7BD;
  gauge.AutoMask = true;
  gauge.MaskPicture = other.Image();
  EXPECT_EQ(gauge.MaskPicture.get().drawing->operations, gauge.operations());
  gauge.MaskColor = 0x123456;
  EXPECT_EQ(gauge.MaskColor, 0x95B7BDU);
}

TEST(GaugeMask, AnAutoMaskHasTheSizeOfTheControl) {
  bkCProg gauge;
  gauge.AutoSize = false;
  gauge.AutoMask = true;
  gauge.resize(200, 150);
  EXPECT_EQ(gauge.MaskPicture.get().width, 200);
  EXPECT_EQ(gauge.MaskPicture.get().height, 150);
}

TEST(GaugeMask, ARepaintOfTheSameFaceKeepsTheAutoMask) {
  bkCProg gauge;
  gauge.AutoMask = true;
  const auto before = gauge.MaskPicture.get().drawing;
  gauge.Repaint();
  EXPECT_EQ(gauge.MaskPicture.get().drawing, before);
}

TEST(GaugeMask, AMaskThatWasDrawnIsNotStored) {
  bkCProg gauge;
  gauge.UseMask = true;
  gauge.AutoMask = true;
  EXPECT_THAT(namesIn(stored(gauge)), ElementsAre("UseMask", "AutoMask"));
}

}  // namespace
}  // namespace veltrin
