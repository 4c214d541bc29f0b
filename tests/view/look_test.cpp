// SPDX-License-Identifier: GPL-3.0-or-later
// Colours and pictures of the windows.
#include <cmath>

#include <QIcon>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionSlider>

#include "frame/startup.h"
#include "view/appearance.h"
#include "view/picture.h"
#include "view/picture_view.h"
#include "view/window_catalogue.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::IsEmpty;

class LookTest : public ViewTest {
 protected:
  // Relative luminance and contrast as the accessibility guidelines of the web (WCAG 2.1)
  // define them.
  static double luminance(const QColor& colour) {
    const auto linear = [](double part) {
      return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
  }
  static double contrast(const QColor& one, const QColor& other) {
    const double high = std::max(luminance(one), luminance(other));
    const double low = std::min(luminance(one), luminance(other));
    return (high + 0.05) / (low + 0.05);
  }

  static int opacityOf(const QPixmap& picture) {
    const QImage image = picture.toImage();
    int highest = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        highest = std::max(highest, image.pixelColor(x, y).alpha());
      }
    }
    return highest;
  }
};

// As on a desktop of Arabic or Hebrew: all texts and the fixed places are English.
TEST_F(LookTest, GoesFromLeftToRightOnADesktopThatGoesFromRightToLeft) {
  QGuiApplication::setLayoutDirection(Qt::RightToLeft);
  setAppearance();
  EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::LeftToRight);
}

TEST_F(LookTest, NoColourIsLeftToTheDesktop) {
  const QPalette palette = QApplication::palette();
  std::vector<int> unset;

  for (int role = 0; role < QPalette::NColorRoles; ++role) {
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
      const auto which = static_cast<QPalette::ColorRole>(role);
      if (which != QPalette::NoRole && !palette.isBrushSet(group, which)) unset.push_back(role);
    }
  }

  EXPECT_THAT(unset, IsEmpty());
}

TEST_F(LookTest, EveryPictureOfTheFormsIsInstalledForAllScales) {
  std::vector<std::string> missing;
  int pictures = 0;

  for (const std::string& name : windowNames()) {
    const auto made = makeWindow(name);
    for (const QWidget* child : made->findChildren<QWidget*>()) {
      const std::string picture = fromQt(child->property(kPictureProperty).toString());
      if (picture.empty()) continue;
      ++pictures;
      if (loadPicture(files, picture).availableSizes().size() != 3) missing.push_back(picture);
    }
  }

  EXPECT_THAT(missing, IsEmpty());
  EXPECT_EQ(pictures, 20);
}

TEST_F(LookTest, EveryToolOfTheMenuHasItsPicture) {
  shown<startup>();

  for (const char* name : {"Command1", "Command2", "Command4", "Command7", "Command8", "Command9",
                           "Command10", "Command12", "Image2", "Image3"}) {
    EXPECT_FALSE(widget<QPushButton>(name)->icon().isNull()) << name;
  }
}

TEST_F(LookTest, AScreenAt150PercentGetsPixelsOfItsOwn) {
  const QIcon picture = loadPicture(files, "ping");

  const QPixmap shown = picture.pixmap(QSize(32, 32), 1.5);

  EXPECT_EQ(shown.size(), QSize(48, 48));
  EXPECT_EQ(shown.toImage(),
            QImage(SHARE_FOLDER "/icons/ping-150.png").convertToFormat(shown.toImage().format()));
}

TEST_F(LookTest, APictureThatIsNotInstalledIsEmpty) {
  EXPECT_TRUE(loadPicture(files, "nothing").isNull());
}

TEST_F(LookTest, ThePictureOfWhatIsDisabledIsPale) {
  const auto form = shown<startup>();
  const QIcon picture = loadPicture(files, "trace");

  EXPECT_EQ(opacityOf(picture.pixmap(QSize(32, 32), 1.0, QIcon::Normal)), 255);
  EXPECT_LT(opacityOf(picture.pixmap(QSize(32, 32), 1.0, QIcon::Disabled)), 128);
}

TEST_F(LookTest, APictureInTheWindowFollowsItsControlsState) {
  const auto form = shown<startup>();
  auto* grip = dynamic_cast<PictureView*>(widget("Image1"));
  const int before = opacityOf(grip->pixmap());

  form->Image1.enabled = false;

  EXPECT_EQ(before, 255);
  EXPECT_LT(opacityOf(grip->pixmap()), 128);
}

TEST_F(LookTest, TheTextOfADisabledButtonIsReadable) {
  QPushButton button(QStringLiteral("Copy"));
  button.resize(112, 32);
  button.setEnabled(false);

  const QColor face = button.grab().toImage().pixelColor(6, 16);
  const QColor text = button.palette().color(QPalette::Disabled, QPalette::ButtonText);

  EXPECT_GE(contrast(text, face), 4.5);
}

TEST_F(LookTest, ADisabledButtonIsPalerThanAnotherInFaceAndText) {
  QPushButton button(QStringLiteral("Copy"));
  button.resize(112, 32);
  const QColor face = button.grab().toImage().pixelColor(6, 16);
  button.setEnabled(false);
  const QColor paleFace = button.grab().toImage().pixelColor(6, 16);

  EXPECT_GT(luminance(paleFace), luminance(face) * 1.3);
  EXPECT_LT(contrast(button.palette().color(QPalette::Disabled, QPalette::ButtonText), paleFace),
            contrast(button.palette().color(QPalette::Active, QPalette::ButtonText), face));
}

class ScrollBarLook : public LookTest {
 protected:
  ScrollBarLook() {
    option.rect = QRect(0, 0, 16, 200);
    option.orientation = Qt::Vertical;
    option.maximum = 100;
    option.pageStep = 50;
    option.sliderPosition = option.sliderValue = 50;
    option.palette = QApplication::palette();
    option.state = QStyle::State_Enabled;
    option.subControls = QStyle::SC_All;
  }

  // The colour in the middle of a part, as the bar is now.
  QColor colourOf(QStyle::SubControl part) const {
    return drawn().pixelColor(
        QApplication::style()->subControlRect(QStyle::CC_ScrollBar, &option, part).center());
  }

  QImage drawn() const {
    QImage image(option.rect.size(), QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    QApplication::style()->drawComplexControl(QStyle::CC_ScrollBar, &option, &painter);
    return image;
  }

  void touch(QStyle::State state) {
    option.state |= state;
    option.activeSubControls = QStyle::SC_ScrollBarSlider;
  }

  QStyleOptionSlider option;
};

TEST_F(ScrollBarLook, TheHandleIsClearlyDarkerThanTheGroove) {
  const QColor handle = colourOf(QStyle::SC_ScrollBarSlider);
  const QColor groove = colourOf(QStyle::SC_ScrollBarSubPage);

  EXPECT_LT(luminance(handle), luminance(groove));
  EXPECT_GE(contrast(handle, groove), 3);
}

TEST_F(ScrollBarLook, TheHandleIsDarkerUnderThePointerAndDarkestWhileItIsHeld) {
  const double atRest = luminance(colourOf(QStyle::SC_ScrollBarSlider));
  touch(QStyle::State_MouseOver);
  const double underPointer = luminance(colourOf(QStyle::SC_ScrollBarSlider));
  touch(QStyle::State_Sunken);
  const double held = luminance(colourOf(QStyle::SC_ScrollBarSlider));

  EXPECT_LT(underPointer, atRest);
  EXPECT_LT(held, underPointer);
}

TEST_F(ScrollBarLook, ALyingHandleIsDarkerThanItsGrooveToo) {
  option.rect = QRect(0, 0, 200, 16);
  option.orientation = Qt::Horizontal;

  EXPECT_GE(contrast(colourOf(QStyle::SC_ScrollBarSlider), colourOf(QStyle::SC_ScrollBarSubPage)),
            3);
}

TEST_F(ScrollBarLook, WhereThereIsNothingToScrollThereIsNoHandle) {
  option.maximum = 0;

  const QImage image = drawn();

  const QColor ground = image.pixelColor(0, 0);
  for (int y = 0; y < image.height(); ++y) EXPECT_EQ(image.pixelColor(8, y), ground) << y;
}

}  // namespace
}  // namespace veltrin
