// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of the dial gauge: defaults, limits, and whom a change is told.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "gauge_text.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Notes what a gauge tells.
class NotedScreen : public GaugeScreen {
 public:
  TextExtent measure(const std::string& text, const DeviceFont&) const override {
    return {static_cast<std::int32_t>(text.size()) * 10, 20};
  }
  std::uintptr_t hWnd() const override { return 4711; }
  void noteDrawing() override { notes.emplace_back("drawing"); }
  void noteValue() override { notes.emplace_back("value"); }
  void noteSize() override { notes.emplace_back("size"); }
  void noteEnd() override { notes.emplace_back("end"); }

  std::vector<std::string> notes;
};

class GaugeProperties : public testing::Test {
 protected:
  GaugeProperties() {
    gauge.showOn(&screen);
    screen.notes.clear();
    gauge.propertyChanged = [this](std::string_view name) { marked.emplace_back(name); };
  }

  NotedScreen screen;
  bkCProg gauge;
  std::vector<std::string> marked;
};

TEST_F(GaugeProperties, NumbersBeginWithTheirDefaults) {
  EXPECT_EQ(gauge.Max, 100);
  EXPECT_EQ(gauge.Min, 0);
  EXPECT_EQ(gauge.Value, 50);
  EXPECT_EQ(gauge.OffsetAngle, 0);
  EXPECT_EQ(gauge.Span, 360);
  EXPECT_EQ(gauge.BorderWidth, 1);
  EXPECT_EQ(gauge.TickSize, 4);
  EXPECT_EQ(gauge.TickFrequency, 10.0F);
  EXPECT_EQ(gauge.TickWidth, 1);
  EXPECT_EQ(gauge.XCenter, 50);
  EXPECT_EQ(gauge.YCenter, 50);
  EXPECT_EQ(gauge.Radius, 25);
  EXPECT_EQ(gauge.TextOffsetX, 0);
  EXPECT_EQ(gauge.TextOffsetY, 0);
  EXPECT_EQ(gauge.TextShadowXOffset, 1);
  EXPECT_EQ(gauge.TextShadowYOffset, 1);
  EXPECT_EQ(gauge.TickStyle, 0);
  EXPECT_EQ(gauge.TickPosition, 0);
}

TEST_F(GaugeProperties, ColoursBeginWithTheirDefaults) {
  EXPECT_EQ(gauge.BackColor, 0x8000000F);
  EXPECT_EQ(gauge.StartColor, 192U);
  EXPECT_EQ(gauge.MidColor, 65535U);
  EXPECT_EQ(gauge.EndColor, 49152U);
  EXPECT_EQ(gauge.CircleColor, 0x8000000F);
  EXPECT_EQ(gauge.BorderColor, 0U);
  EXPECT_EQ(gauge.TextColor, 0xFFFFFFU);
  EXPECT_EQ(gauge.NeedleColor, 0x80000012);
  EXPECT_EQ(gauge.TextShadowColor, 0x808080U);
  EXPECT_EQ(gauge.TickColor, 0U);
  EXPECT_EQ(gauge.MaskColor, 0x8000000F);
}

TEST_F(GaugeProperties, SwitchesBeginWithTheirDefaults) {
  EXPECT_TRUE(gauge.Tricolor);
  EXPECT_FALSE(gauge.Fade);
  EXPECT_TRUE(gauge.ShowBorder);
  EXPECT_TRUE(gauge.Clockwise);
  EXPECT_FALSE(gauge.ShowZeroLine);
  EXPECT_TRUE(gauge.Gradient);
  EXPECT_FALSE(gauge.ShowValue);
  EXPECT_FALSE(gauge.TextShadow);
  EXPECT_TRUE(gauge.AutoSize);
  EXPECT_FALSE(gauge.ShowNeedle);
  EXPECT_TRUE(gauge.ShowArc);
  EXPECT_TRUE(gauge.ShowCircle);
  EXPECT_FALSE(gauge.ShowValueAsPercent);
  EXPECT_FALSE(gauge.Inset);
  EXPECT_FALSE(gauge.UseMask);
  EXPECT_FALSE(gauge.AutoMask);
}

TEST_F(GaugeProperties, AtFirstThereIsNoPictureAndTheLettersAreThoseAround) {
  EXPECT_FALSE(gauge.Picture.get().isSet());
  EXPECT_FALSE(gauge.MaskPicture.get().isSet());
  EXPECT_EQ(gauge.Font, DeviceFont{});
}

TEST_F(GaugeProperties, AValueBelowTheScaleBecomesItsBottom) {
  gauge.Min = 20;
  gauge.Value = 20;
  gauge.Value = 19;
  EXPECT_EQ(gauge.Value, 20);
}

TEST_F(GaugeProperties, AValueAboveTheScaleBecomesItsTop) {
  gauge.Value = 101;
  EXPECT_EQ(gauge.Value, 100);
}

TEST_F(GaugeProperties, TheEndsOfTheScaleAreValues) {
  gauge.Value = 100;
  EXPECT_EQ(gauge.Value, 100);
  gauge.Value = 0;
  EXPECT_EQ(gauge.Value, 0);
}

TEST_F(GaugeProperties, AnotherScaleLeavesTheValueAsItWasWritten) {
  gauge.Max = 10;
  EXPECT_EQ(gauge.Value, 50);
}

TEST_F(GaugeProperties, AnOffsetBelowZeroIsTurnedOn) {
  gauge.OffsetAngle = -90;
  EXPECT_EQ(gauge.OffsetAngle, 270);
  gauge.OffsetAngle = -720;
  EXPECT_EQ(gauge.OffsetAngle, 0);
}

TEST_F(GaugeProperties, AnOffsetOfAWholeTurnIsTurnedBack) {
  gauge.OffsetAngle = 359;
  EXPECT_EQ(gauge.OffsetAngle, 359);
  gauge.OffsetAngle = 360;
  EXPECT_EQ(gauge.OffsetAngle, 0);
  gauge.OffsetAngle = 1000;
  EXPECT_EQ(gauge.OffsetAngle, 280);
}

TEST_F(GaugeProperties, ASpanBelow45Becomes45) {
  gauge.Span = 30;
  EXPECT_EQ(gauge.Span, 45);
  gauge.Span = 46;
  EXPECT_EQ(gauge.Span, 46);
  gauge.Span = -360;
  EXPECT_EQ(gauge.Span, 45);
}

TEST_F(GaugeProperties, ASpanAbove360LosesAWholeTurnBeforeItBecomes45) {
  gauge.Span = 400;
  EXPECT_EQ(gauge.Span, 45);
  gauge.Span = 500;
  EXPECT_EQ(gauge.Span, 140);
}

TEST_F(GaugeProperties, ASpanOfWholeTurnsIsOne) {
  gauge.Span = 45;
  gauge.Span = 720;
  EXPECT_EQ(gauge.Span, 360);
  gauge.Span = 361;
  EXPECT_EQ(gauge.Span, 45);
}

TEST_F(GaugeProperties, AnotherValueIsDrawnAndThenToldAndMarked) {
  gauge.propertyChanged = [this](std::string_view name) { screen.notes.emplace_back(name); };

  gauge.Value = 60;

  EXPECT_THAT(screen.notes, ElementsAre("drawing", "value", "Value"));
}

TEST_F(GaugeProperties, TheSameValueAgainIsNeitherDrawnNorToldNorMarked) {
  gauge.Value = 50;

  EXPECT_THAT(screen.notes, IsEmpty());
  EXPECT_THAT(marked, IsEmpty());
}

TEST_F(GaugeProperties, AValueThatIsLimitedToThePresentOneIsNotDrawn) {
  gauge.Value = 100;
  screen.notes.clear();

  gauge.Value = 5000;

  EXPECT_THAT(screen.notes, IsEmpty());
}

TEST_F(GaugeProperties, AValueThatLooksLikeTheOneBeforeIsToldButNotDrawn) {
  gauge.Max = 100000;
  gauge.Value = 10;
  screen.notes.clear();

  gauge.Value = 11;

  EXPECT_THAT(screen.notes, ElementsAre("value"));
}

TEST_F(GaugeProperties, APartThatIsNotShownIsMarkedButNotDrawn) {
  gauge.NeedleColor = 0xFF;

  EXPECT_THAT(screen.notes, IsEmpty());
  EXPECT_THAT(marked, ElementsAre("NeedleColor"));
}

TEST_F(GaugeProperties, TheBorderIsMarkedUnderItsNameInTheBag) {
  gauge.ShowBorder = false;

  EXPECT_THAT(screen.notes, ElementsAre("drawing"));
  EXPECT_THAT(marked, ElementsAre("Border"));
}

TEST_F(GaugeProperties, AnEdgeAndAMaskAreShownWithoutADrawing) {
  gauge.Inset = true;
  gauge.UseMask = true;
  gauge.MaskColor = 0xFF;
  gauge.MaskPicture = DevicePicture{"mask", nullptr, 10, 10};

  EXPECT_THAT(screen.notes, ElementsAre("drawing", "drawing", "drawing", "drawing"));
}

TEST_F(GaugeProperties, ARepaintOfTheSameFaceTellsNothing) {
  gauge.Repaint();

  EXPECT_THAT(screen.notes, IsEmpty());
}

TEST_F(GaugeProperties, AGaugeThatNobodyShowsTellsNobody) {
  gauge.showOn(nullptr);
  gauge.Value = 60;

  EXPECT_THAT(screen.notes, IsEmpty());
  EXPECT_EQ(gauge.hWnd(), 0U);
}

TEST_F(GaugeProperties, TheHandleIsThatOfTheWindowThatShowsIt) { EXPECT_EQ(gauge.hWnd(), 4711U); }

TEST_F(GaugeProperties, TextsHaveTheExtentThatTheScreenGivesThem) {
  gauge.ShowValue = true;

  EXPECT_EQ(drawn(gauge).back(), "TextOutA 40 40 \"50\"");
}

TEST_F(GaugeProperties, WhoShowsTheGaugeIsToldOfItsDrawingAtOnce) {
  NotedScreen other;
  gauge.showOn(&other);
  gauge.showOn(nullptr);

  EXPECT_THAT(other.notes, ElementsAre("drawing"));
  EXPECT_THAT(screen.notes, IsEmpty());
}

TEST_F(GaugeProperties, TheTextIsPlacedAnewByTheLettersOfAnotherScreen) {
  bkCProg other;
  other.ShowValue = true;
  EXPECT_EQ(drawn(other).back(), "TextOutA 44 44 \"50\"");
  other.showOn(&screen);
  EXPECT_EQ(drawn(other).back(), "TextOutA 40 40 \"50\"");
  other.showOn(nullptr);
  EXPECT_EQ(drawn(other).back(), "TextOutA 44 44 \"50\"");
}

TEST_F(GaugeProperties, AReadFromTheBagTellsTheDrawingAndTheValue) {
  gauge.ReadProperties(PropertyBag());

  EXPECT_THAT(screen.notes, ElementsAre("drawing", "value"));
  EXPECT_THAT(marked, IsEmpty());
}

TEST_F(GaugeProperties, AGaugeTellsItsEnd) {
  NotedScreen other;
  {
    bkCProg brief;
    brief.showOn(&other);
  }
  EXPECT_THAT(other.notes, ElementsAre("drawing", "end"));
}

TEST_F(GaugeProperties, ASizeOfItsOwnIsToldAndOneThatItIsGivenIsNot) {
  gauge.Picture = DevicePicture{"face", nullptr, 80, 60};
  screen.notes.clear();
  gauge.resize(50, 50);
  gauge.AutoSizeToPicture();
  EXPECT_THAT(screen.notes, ElementsAre("drawing", "drawing", "size"));
}

// --- Fitting ---

struct Fit {
  std::int32_t x;
  std::int32_t y;
  std::int32_t radius;
  friend bool operator==(const Fit&, const Fit&) = default;
};

class GaugeFit : public testing::Test {
 protected:
  Fit fitted(std::int32_t width, std::int32_t height) {
    gauge.resize(width, height);
    return {gauge.XCenter, gauge.YCenter, gauge.Radius};
  }

  bkCProg gauge;
};

TEST_F(GaugeFit, TheControlHas100By100PixelsAtFirst) {
  EXPECT_EQ(gauge.width(), 100);
  EXPECT_EQ(gauge.height(), 100);
}

TEST_F(GaugeFit, TheDialStandsInTheMiddleWithItsBorderInside) {
  EXPECT_EQ(fitted(121, 91), (Fit{60, 45, 44}));
}

TEST_F(GaugeFit, AHighControlHasTheRadiusOfItsWidth) {
  EXPECT_EQ(fitted(80, 200), (Fit{40, 100, 39}));
}

TEST_F(GaugeFit, AWideBorderTakesHalfItsWidthAndAHalfRoundedToTheEvenNumber) {
  gauge.BorderWidth = 4;
  EXPECT_EQ(fitted(100, 100), (Fit{50, 50, 48}));
  EXPECT_EQ(fitted(102, 102), (Fit{51, 51, 48}));
  gauge.BorderWidth = 5;
  EXPECT_EQ(fitted(100, 100), (Fit{50, 50, 47}));
}

TEST_F(GaugeFit, WithoutABorderTheDialReachesTheEdge) {
  gauge.ShowBorder = false;
  EXPECT_EQ(fitted(100, 100), (Fit{50, 50, 50}));
}

TEST_F(GaugeFit, TicksInsideTakeNoRoom) {
  gauge.TickStyle = kLineTicks;
  gauge.TickSize = 6;
  EXPECT_EQ(fitted(100, 100), (Fit{50, 50, 49}));
}

TEST_F(GaugeFit, TicksOutsideTakeTheirSize) {
  gauge.TickStyle = kLineTicks;
  gauge.TickPosition = kTicksOutside;
  gauge.TickSize = 6;
  EXPECT_EQ(fitted(100, 100), (Fit{50, 50, 43}));
}

TEST_F(GaugeFit, TicksAcrossTakeHalfTheirSize) {
  gauge.TickStyle = kHollowDots;
  gauge.TickPosition = kTicksAcross;
  gauge.TickSize = 6;
  EXPECT_EQ(fitted(100, 100), (Fit{50, 50, 46}));
}

TEST_F(GaugeFit, TicksThatAreNotDrawnTakeNoRoom) {
  gauge.TickPosition = kTicksOutside;
  EXPECT_EQ(fitted(100, 100), (Fit{50, 50, 49}));
}

TEST_F(GaugeFit, AControlTooSmallHasNoRadius) {
  EXPECT_EQ(fitted(1, 1), (Fit{0, 0, 0}));
  EXPECT_EQ(fitted(-5, -7), (Fit{0, 0, 0}));
  EXPECT_EQ(gauge.width(), 0);
  EXPECT_EQ(gauge.height(), 0);
}

TEST_F(GaugeFit, WithoutAutoSizeADialKeepsItsPlace) {
  gauge.AutoSize = false;
  EXPECT_EQ(fitted(200, 200), (Fit{50, 50, 25}));
}

TEST_F(GaugeFit, AutoSizeFitsTheDialWhenItIsSet) {
  gauge.AutoSize = false;
  gauge.resize(200, 200);
  gauge.AutoSize = true;
  EXPECT_EQ(gauge.Radius, 99);
  EXPECT_EQ(drawn(gauge).back(), "Ellipse 1 1 200 200");
}

TEST_F(GaugeFit, AutoSizeFitsTheDialAnewWhenItIsSetOnceMore) {
  gauge.Radius = 10;
  gauge.AutoSize = true;
  EXPECT_EQ(gauge.Radius, 49);
}

TEST_F(GaugeFit, AutoSizeThatIsTakenAwayLeavesTheDial) {
  gauge.Radius = 30;
  gauge.AutoSize = false;
  EXPECT_EQ(gauge.Radius, 30);
}

TEST_F(GaugeFit, AnotherSizeIsDrawn) {
  gauge.resize(50, 50);
  EXPECT_EQ(drawn(gauge).back(), "Ellipse 1 1 50 50");
}

}  // namespace
}  // namespace veltrin
