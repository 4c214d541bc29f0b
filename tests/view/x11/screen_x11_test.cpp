// SPDX-License-Identifier: GPL-3.0-or-later
// Windows, the mouse and borders on a real X server, as other programs see them. Run at
// several scales.
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>

#include <QImage>
#include <QPixmap>
#include <QScreen>

#include "view_test.h"
#include "x11/x11_tools.h"

namespace veltrin {
namespace {

// The number behind a word in a text.
int numberBehind(const std::string& text, const std::string& word) {
  const auto found = text.find(word);
  EXPECT_NE(found, std::string::npos) << "no \"" << word << "\" in: " << text;
  return found == std::string::npos ? -1 : std::atoi(text.c_str() + found + word.size());
}

class X11Test : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    ASSERT_EQ(QGuiApplication::platformName(), "xcb");
    QCursor::setPos(5, 5);
    form = shown<setlang>();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
  }

  double scale() const { return window->devicePixelRatioF(); }

  // Pixels by which a place may be off: one less than those of one step of Qt's.
  int slack() const { return static_cast<int>(std::ceil(scale())) - 1; }

  // Where the X server has the window, with the frame that the window manager tells of.
  ScreenRectangle placeByServer() const {
    const std::string id = std::to_string(window->winId());
    const std::string facts = outputOf("xwininfo -id " + id);
    const std::string frame = outputOf("xprop -id " + id + " _NET_FRAME_EXTENTS");
    std::array<int, 4> extents{};  // left, right, top, bottom
    EXPECT_EQ(std::sscanf(frame.c_str(), "_NET_FRAME_EXTENTS(CARDINAL) = %d, %d, %d, %d",
                          &extents[0], &extents[1], &extents[2], &extents[3]),
              4)
        << frame;
    const int left = numberBehind(facts, "Absolute upper-left X:");
    const int top = numberBehind(facts, "Absolute upper-left Y:");
    return {left - extents[0], top - extents[2], left + numberBehind(facts, "Width:") + extents[1],
            top + numberBehind(facts, "Height:") + extents[3]};
  }

  // A place's corners are off once for the place itself and once for its size.
  bool isNear(const ScreenRectangle& one, const ScreenRectangle& other) const {
    return std::abs(one.left - other.left) <= slack() && std::abs(one.top - other.top) <= slack() &&
           std::abs(one.right - other.right) <= 2 * slack() &&
           std::abs(one.bottom - other.bottom) <= 2 * slack();
  }

  // The whole screen, pixel by pixel.
  static QImage screenshot() {
    QImage image = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    image.setDevicePixelRatio(1);
    return image.convertToFormat(QImage::Format_RGB32);
  }

  // The screen once nothing on it changes any more: the window manager draws a frame
  // anew, some time after it has appeared, when its window becomes the active one.
  static QImage stillScreen() {
    constexpr int kStill = 300;  // ms
    constexpr int kLooks = 30;
    EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::activeWindow() != nullptr; }));
    QImage last = screenshot();
    for (int look = 0; look < kLooks; ++look) {
      QTest::qWait(kStill);
      const QImage present = screenshot();
      if (present == last) break;
      last = present;
    }
    return last;
  }

  // The smallest area in which two pictures differ.
  static QRect differenceOf(const QImage& one, const QImage& other) {
    QRect area;
    for (int y = 0; y < one.height(); ++y) {
      for (int x = 0; x < one.width(); ++x) {
        if (one.pixel(x, y) != other.pixel(x, y)) area |= QRect(x, y, 1, 1);
      }
    }
    return area;
  }

  void drawBand(ScreenRectangle place) {
    for (int i = 0; i < 4; ++i) {
      desktop.drawFocusRectangle(place);
      ++place.left;
      ++place.top;
      --place.right;
      --place.bottom;
    }
  }

  bool screenDiffersFrom(const QImage& before) {
    return QTest::qWaitFor([&] { return screenshot() != before; });
  }

  std::shared_ptr<setlang> form;
};

TEST_F(X11Test, AWindowsPlaceIsThatWhichTheServerTells) {
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return isNear(desktop.windowRectangle(*form), placeByServer()); }));
  EXPECT_LT(placeByServer().top + 5, window->mapToGlobal(QPoint()).y() * scale())
      << "the frame counts";
}

TEST_F(X11Test, AWindowIsMovedWithItsFrame) {
  ScreenRectangle place = desktop.windowRectangle(*form);
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  place = {300, 250, 300 + width, 250 + height};

  desktop.moveWindow(*form, place);

  EXPECT_TRUE(QTest::qWaitFor([&] { return isNear(placeByServer(), place); }));
  EXPECT_TRUE(QTest::qWaitFor([&] { return isNear(desktop.windowRectangle(*form), place); }));
}

TEST_F(X11Test, TheMouseIsWhereTheServerHasIt) {
  outputOf("xdotool mousemove 311 217");

  EXPECT_TRUE(QTest::qWaitFor([&] {
    const ScreenPoint mouse = desktop.cursorPosition();
    return std::abs(mouse.x - 311) <= slack() && std::abs(mouse.y - 217) <= slack();
  }));
}

TEST_F(X11Test, ABandChangesItsOwnPixelsAloneAndGoesWithoutATrace) {
  const QImage before = stillScreen();
  // Across the window and beyond it.
  const ScreenRectangle place{50, 60, 1500, 1100};

  drawBand(place);
  ASSERT_TRUE(screenDiffersFrom(before));
  const QImage drawn = screenshot();
  std::filesystem::create_directories(PICTURE_FOLDER);
  drawn.save(toQt(std::string(PICTURE_FOLDER) + "/drag-band-") + QString::number(scale()) + ".png");
  const QRect changed = differenceOf(before, drawn);
  EXPECT_TRUE(
      isNear({changed.left(), changed.top(), changed.right() + 1, changed.bottom() + 1}, place))
      << changed.left() << " " << changed.top() << " " << changed.right() << " "
      << changed.bottom();
  const int width = static_cast<int>(std::ceil(4 + 2 * scale()));
  const QRect inside = changed.adjusted(width, width, -width, -width);
  EXPECT_TRUE(drawn.copy(inside) == before.copy(inside));

  drawBand(place);
  EXPECT_TRUE(QTest::qWaitFor([&] { return screenshot() == before; }));
}

// Light on dark and dark on light: neither ground hides it.
TEST_F(X11Test, ABandHasLightAndDarkPixelsSideBySide) {
  const QImage before = stillScreen();
  drawBand({50, 60, 1500, 1100});
  ASSERT_TRUE(screenDiffersFrom(before));

  const QImage drawn = screenshot();
  int light = 0;
  int dark = 0;
  for (int x = 100; x < 200; ++x) {
    const int grey = qGray(drawn.pixel(x, 61));
    light += grey > 200 ? 1 : 0;
    dark += grey < 50 ? 1 : 0;
  }
  EXPECT_GE(light, 25);
  EXPECT_GE(dark, 25);
}

TEST_F(X11Test, ABandLetsTheMouseThrough) {
  int clicks = 0;
  form->Command2.click = [&] { ++clicks; };
  QWidget* button = widget("Command2");
  const QPoint middle = button->mapToGlobal(button->rect().center());
  const ScreenPoint spot{qRound(middle.x() * scale()), qRound(middle.y() * scale())};
  const QImage before = stillScreen();
  // The spot lies on the band.
  drawBand({spot.x - 2, spot.y - 2, spot.x + 400, spot.y + 300});
  ASSERT_TRUE(screenDiffersFrom(before));

  const EventGate::Opening opening(events.gate());
  outputOf("xdotool mousemove " + std::to_string(spot.x) + " " + std::to_string(spot.y) +
           " click 1");

  EXPECT_TRUE(QTest::qWaitFor([&] { return clicks == 1; }));
}

}  // namespace
}  // namespace veltrin
