// SPDX-License-Identifier: GPL-3.0-or-later
// Labels whose text the program colours.
#include "view/contrast.h"

#include <QLabel>

#include "mtu/pingit.h"
#include "mtu/setmtu.h"
#include "pictures.h"

namespace veltrin {
namespace {

constexpr Colour kGreen{0x00, 0x80, 0x00};
constexpr Colour kBrightGreen{0x00, 0xC0, 0x00};
constexpr Colour kNavy{0x00, 0x00, 0x80};
constexpr Colour kPurple{0x80, 0x00, 0x80};
constexpr Colour kDarkRed{0x80, 0x00, 0x00};
constexpr Colour kRed{0xFF, 0x00, 0x00};

TEST(ContrastTest, BlackAndWhiteHaveTheGreatest) {
  EXPECT_DOUBLE_EQ(contrast(Qt::black, Qt::white), 21);
  EXPECT_DOUBLE_EQ(contrast(Qt::white, Qt::black), 21);
}

TEST(ContrastTest, AColourHasNoneToItself) { EXPECT_DOUBLE_EQ(contrast(Qt::red, Qt::red), 1); }

// A pair that the guidelines' readers use as an example: the lightest grey for white.
TEST(ContrastTest, AGreyOf76IsJustReadableOnWhite) {
  EXPECT_NEAR(contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.005);
  EXPECT_LT(contrast(QColor(0x77, 0x77, 0x77), Qt::white), kReadableContrast);
}

TEST(ContrastTest, AReadableColourStaysAsItIs) {
  EXPECT_EQ(readableOn(Qt::white, QColor(0, 0, 0x80)), QColor(0, 0, 0x80));
}

TEST(ContrastTest, APaleColourOnALightGroundBecomesJustAsDarkAsItTakes) {
  const QColor ink = readableOn(Qt::white, QColor(0, 0xC0, 0));

  EXPECT_GE(contrast(ink, Qt::white), kReadableContrast);
  EXPECT_LT(contrast(ink, Qt::white), kReadableContrast + 0.15);
  EXPECT_EQ(ink.hslHue(), QColor(0, 0xC0, 0).hslHue());
}

TEST(ContrastTest, ADarkColourOnADarkGroundBecomesLighter) {
  const QColor ground(0x20, 0x20, 0x20);

  const QColor ink = readableOn(ground, QColor(0x80, 0, 0));

  EXPECT_GE(contrast(ink, ground), kReadableContrast);
  EXPECT_LT(contrast(ink, ground), kReadableContrast + 0.15);
  EXPECT_GT(ink.lightness(), QColor(0x80, 0, 0).lightness());
}

TEST(ContrastTest, OnAnyGreyThereIsSomethingToBeRead) {
  for (int grey = 0; grey <= 255; ++grey) {
    const QColor ground(grey, grey, grey);
    EXPECT_GE(contrast(readableOn(ground, ground), ground), kReadableContrast) << grey;
  }
}

class LabelColour : public Pictures {
 protected:
  // The colour in which a label's text is drawn, and what it stands on, both as they are
  // seen.
  QColor ink(const char* name) const {
    const auto* label = widget<QLabel>(name);
    return label->palette().color(QPalette::Active, label->foregroundRole());
  }
  QColor ground(const char* name) const {
    const QWidget* label = widget(name);
    return window->grab().toImage().pixelColor(
        label->mapTo(window, QPoint(label->width() - 2, label->height() / 2)) *
        window->devicePixelRatioF());
  }
};

TEST_F(LabelColour, EveryColourOfTheMtuWindowsIsReadableOnItsGround) {
  const auto form = look<setmtu>();

  for (const Colour& colour : {kGreen, kBrightGreen, kNavy, kPurple, kDarkRed, kRed}) {
    for (auto [name, label] :
         {std::pair("results", &form->results), std::pair("testmtu", &form->testmtu),
          std::pair("Label1", &form->Label1)}) {
      label->foreColour = colour;
      EXPECT_GE(contrast(ink(name), ground(name)), kReadableContrast) << name;
    }
  }
}

TEST_F(LabelColour, AColourThatIsReadableIsShownToTheLetter) {
  const auto form = look<pingit>();

  EXPECT_EQ(ink("lb_1"), QColor(0, 0, 0x80));
  EXPECT_EQ(ink("lb_2"), QColor(0x80, 0, 0x80));
  EXPECT_EQ(ink("lb_3"), QColor(0x80, 0, 0));
}

TEST_F(LabelColour, RedStaysRed) {
  const auto form = look<pingit>();

  EXPECT_GT(ink("lb_7").red(), 0xC0);
  EXPECT_EQ(ink("lb_7").green(), 0);
  EXPECT_EQ(ink("lb_7").blue(), 0);
}

TEST_F(LabelColour, ALabelWithoutAColourHasThatOfTheLook) {
  const auto form = look<setmtu>();
  const QColor before = ink("results");
  form->results.foreColour = kRed;
  ASSERT_NE(ink("results"), before);

  form->results.foreColour = std::nullopt;

  EXPECT_EQ(ink("results"), before);
  EXPECT_EQ(before, QApplication::palette().color(QPalette::WindowText));
}

TEST_F(LabelColour, ADisabledLabelIsAsPaleAsAnyOther) {
  const auto form = look<setmtu>();
  form->results.foreColour = kRed;
  const auto* label = widget<QLabel>("results");

  EXPECT_EQ(label->palette().color(QPalette::Disabled, label->foregroundRole()),
            QApplication::palette().color(QPalette::Disabled, QPalette::WindowText));
}

}  // namespace
}  // namespace veltrin
