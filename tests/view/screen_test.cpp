// SPDX-License-Identifier: GPL-3.0-or-later
// Places on the screen, in pixels at every scale, and borders that are drawn there. Run
// at several scales and on several screens.
#include <cmath>

#include <QCursor>
#include <QScreen>

#include "view_test.h"

namespace veltrin {
namespace {

class ScreenTest : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    form = shown<setlang>();
  }

  static std::vector<QScreen*> screens() {
    const auto all = QGuiApplication::screens();
    return {all.begin(), all.end()};
  }

  // The middle of a screen in pixels.
  static ScreenPoint middleOf(const QScreen& screen) {
    const QRect area = screen.geometry();
    const double half = screen.devicePixelRatio() / 2;
    return {area.left() + static_cast<int>(area.width() * half),
            area.top() + static_cast<int>(area.height() * half)};
  }

  // The window's size with the corner a little beside the middle of a screen.
  ScreenRectangle placeOn(const QScreen& screen) const {
    const ScreenPoint middle = middleOf(screen);
    const ScreenRectangle now = desktop.windowRectangle(*form);
    const int width = now.right - now.left;
    const int height = now.bottom - now.top;
    const int left = middle.x - width / 2 + 7;
    const int top = middle.y - height / 2 + 5;
    return {left, top, left + width, top + height};
  }

  // Whether the window comes to a corner, as near as the scale of its screen allows.
  bool comesTo(int left, int top) const {
    return QTest::qWaitFor([&] {
      const ScreenRectangle now = desktop.windowRectangle(*form);
      const int slack = slackOf(*window->screen());
      return std::abs(now.left - left) <= slack && std::abs(now.top - top) <= slack;
    });
  }

  void moveToOwnPlace() {
    desktop.moveWindow(*form, desktop.windowRectangle(*form));
    QTest::qWait(1);
  }

  // Pixels by which a place may be off: one less than those of one step of Qt's.
  static int slackOf(const QScreen& screen) {
    return static_cast<int>(std::ceil(screen.devicePixelRatio())) - 1;
  }

  // The window that shows borders; null when none is shown.
  static QWidget* borders() {
    for (QWidget* each : QApplication::topLevelWidgets()) {
      if (each->objectName() == "borders" && each->isVisible()) return each;
    }
    return nullptr;
  }

  // The part of the screen that borders cover, in Qt's coordinates.
  QRegion lines() {
    atRest([] {});
    const QWidget* shown = borders();
    return shown == nullptr ? QRegion() : shown->mask().translated(shown->pos());
  }

  // The area in Qt's coordinates that covers a place on the first screen, which lies at
  // the origin.
  static QRect around(const ScreenRectangle& place) {
    const double scale = screens().front()->devicePixelRatio();
    const auto before = [=](int pixels) { return static_cast<int>(std::floor(pixels / scale)); };
    const auto behind = [=](int pixels) { return static_cast<int>(std::ceil(pixels / scale)); };
    return {QPoint(before(place.left), before(place.top)),
            QPoint(behind(place.right) - 1, behind(place.bottom) - 1)};
  }

  static QRegion lineAround(const ScreenRectangle& place) {
    const QRect area = around(place);
    return QRegion(area) - QRegion(area.adjusted(1, 1, -1, -1));
  }

  // The band of a drag: four borders, one within the other.
  void drawBand(ScreenRectangle place) {
    for (int i = 0; i < 4; ++i) {
      desktop.drawFocusRectangle(place);
      ++place.left;
      ++place.top;
      --place.right;
      --place.bottom;
    }
  }

  std::shared_ptr<setlang> form;
};

TEST_F(ScreenTest, AWindowsPlaceIsThatOfItsFrameInPixels) {
  const QRect frame = window->frameGeometry();
  const QPoint corner = window->screen()->geometry().topLeft();
  const double scale = window->screen()->devicePixelRatio();

  const ScreenRectangle place = desktop.windowRectangle(*form);

  EXPECT_EQ(place.left, corner.x() + qRound((frame.x() - corner.x()) * scale));
  EXPECT_EQ(place.top, corner.y() + qRound((frame.y() - corner.y()) * scale));
  EXPECT_EQ(place.right - place.left, qRound(frame.width() * scale));
  EXPECT_EQ(place.bottom - place.top, qRound(frame.height() * scale));
  EXPECT_GT(frame.height(), window->height()) << "the frame counts";
}

TEST_F(ScreenTest, AWindowOpensInsideItsScreen) {
  const QRect room = window->screen()->availableGeometry();
  window->hide();
  window->move(room.bottomRight() - QPoint(50, 40));

  window->show();

  EXPECT_TRUE(QTest::qWaitFor([&] { return room.contains(window->frameGeometry()); }))
      << window->frameGeometry().right() << " of " << room.right();
}

TEST_F(ScreenTest, AWindowComesToItsPlaceOnEveryScreen) {
  for (QScreen* screen : screens()) {
    const ScreenRectangle place = placeOn(*screen);

    desktop.moveWindow(*form, place);

    EXPECT_TRUE(comesTo(place.left, place.top)) << screen->name().toStdString();
    EXPECT_EQ(window->screen(), screen);
  }
}

// On a screen of another scale the frame is measured anew by the first move.
TEST_F(ScreenTest, AWindowThatIsMovedToItsOwnPlaceStaysThere) {
  for (QScreen* screen : screens()) {
    const ScreenRectangle wanted = placeOn(*screen);
    desktop.moveWindow(*form, wanted);
    ASSERT_TRUE(comesTo(wanted.left, wanted.top));
    moveToOwnPlace();
    const ScreenRectangle place = desktop.windowRectangle(*form);
    const QSize size = window->size();

    for (int i = 0; i < 5; ++i) moveToOwnPlace();

    EXPECT_TRUE(desktop.windowRectangle(*form) == place) << screen->name().toStdString();
    EXPECT_EQ(window->size(), size);
  }
}

TEST_F(ScreenTest, AWindowTakesTheSizeOfItsPlace) {
  ScreenRectangle place = desktop.windowRectangle(*form);
  place.right += 40;
  place.bottom += 30;

  desktop.moveWindow(*form, place);

  const int slack = slackOf(*window->screen());
  EXPECT_TRUE(QTest::qWaitFor([&] {
    const ScreenRectangle now = desktop.windowRectangle(*form);
    return std::abs(now.right - place.right) <= slack &&
           std::abs(now.bottom - place.bottom) <= slack;
  }));
}

TEST_F(ScreenTest, TheMouseIsInTheSamePixelsAsTheWindows) {
  for (QScreen* screen : screens()) {
    const ScreenRectangle wanted = placeOn(*screen);
    desktop.moveWindow(*form, wanted);
    ASSERT_TRUE(comesTo(wanted.left, wanted.top));

    QCursor::setPos(window->frameGeometry().center());

    const ScreenRectangle place = desktop.windowRectangle(*form);
    const ScreenPoint mouse = desktop.cursorPosition();
    const double slack = 2 * screen->devicePixelRatio();
    EXPECT_NEAR(mouse.x, (place.left + place.right) / 2.0, slack) << screen->name().toStdString();
    EXPECT_NEAR(mouse.y, (place.top + place.bottom) / 2.0, slack) << screen->name().toStdString();
  }
}

TEST_F(ScreenTest, AWindowThatIsDraggedKeepsItsPlaceUnderTheMouse) {
  for (QScreen* screen : screens()) {
    const QPoint grip = window->frameGeometry().topLeft() + QPoint(20, 30);
    QCursor::setPos(grip);
    const ScreenPoint from = desktop.cursorPosition();
    const ScreenRectangle start = desktop.windowRectangle(*form);
    const ScreenPoint offset{from.x - start.left, from.y - start.top};

    QCursor::setPos(screen->geometry().center());
    const ScreenPoint to = desktop.cursorPosition();
    const int left = to.x - offset.x;
    const int top = to.y - offset.y;
    desktop.moveWindow(
        *form, {left, top, left + start.right - start.left, top + start.bottom - start.top});

    EXPECT_TRUE(comesTo(left, top)) << screen->name().toStdString();
  }
}

TEST_F(ScreenTest, AFormThatWasNeverShownHasNoPlace) {
  const auto hidden = program.keep<pingtester>();

  desktop.moveWindow(*hidden, {1, 2, 30, 40});

  EXPECT_TRUE(desktop.windowRectangle(*hidden) == ScreenRectangle());
}

TEST_F(ScreenTest, TheSystemMovesNoWindowWhereProgramsPlaceThem) {
  EXPECT_FALSE(desktop.moveBySystem(*form));
}

TEST_F(ScreenTest, ABorderIsDrawnAroundItsPlace) {
  const ScreenRectangle place{30, 40, 210, 130};

  desktop.drawFocusRectangle(place);

  EXPECT_EQ(lines(), lineAround(place));
}

TEST_F(ScreenTest, ABorderThatIsDrawnTwiceIsGone) {
  desktop.drawFocusRectangle({30, 40, 210, 130});
  ASSERT_NE(lines(), QRegion());

  desktop.drawFocusRectangle({30, 40, 210, 130});

  EXPECT_EQ(lines(), QRegion());
}

TEST_F(ScreenTest, ABorderThatIsDrawnThreeTimesIsThere) {
  const ScreenRectangle place{30, 40, 210, 130};

  for (int i = 0; i < 3; ++i) desktop.drawFocusRectangle(place);

  EXPECT_EQ(lines(), lineAround(place));
}

TEST_F(ScreenTest, ABorderStaysWhenAnotherGoes) {
  const ScreenRectangle stays{30, 40, 210, 130};
  desktop.drawFocusRectangle(stays);
  desktop.drawFocusRectangle({300, 40, 400, 130});
  ASSERT_EQ(lines(), lineAround(stays) + lineAround({300, 40, 400, 130}));

  desktop.drawFocusRectangle({300, 40, 400, 130});

  EXPECT_EQ(lines(), lineAround(stays));
}

// A step of a drag: the band at the old place and then at the new one.
TEST_F(ScreenTest, ABandThatMovesLeavesNothingBehind) {
  drawBand({30, 40, 210, 130});
  ASSERT_EQ(lines().boundingRect(), around({30, 40, 210, 130}));

  drawBand({30, 40, 210, 130});
  drawBand({50, 44, 230, 134});

  EXPECT_EQ(lines().boundingRect(), around({50, 44, 230, 134}));
}

TEST_F(ScreenTest, ABandIsFourPixelsWideWithoutAGap) {
  const double scale = screens().front()->devicePixelRatio();
  drawBand({30, 40, 210, 130});
  const QRegion band = lines();
  const QRect area = band.boundingRect();

  int width = 0;
  while (band.contains(QPoint(area.left() + width, area.center().y()))) ++width;

  EXPECT_GT(width * scale, 3);
  EXPECT_LT(width * scale, 4 + 2 * scale - 1);
  EXPECT_EQ(band, QRegion(area) - QRegion(area.adjusted(width, width, -width, -width)));
}

TEST_F(ScreenTest, BordersLetTheMouseThroughAndTakeNoKeys) {
  drawBand({30, 40, 210, 130});
  lines();

  ASSERT_NE(borders(), nullptr);
  EXPECT_TRUE(borders()->windowFlags().testFlag(Qt::WindowTransparentForInput));
  EXPECT_TRUE(borders()->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
  EXPECT_TRUE(window->isActiveWindow());
}

TEST_F(ScreenTest, BordersGoWithTheDesktop) {
  {
    QtDesktop other(events, files, "Veltrin", showInWindow);
    other.drawFocusRectangle({30, 40, 210, 130});
    atRest([] {});
    ASSERT_NE(borders(), nullptr);
  }

  EXPECT_EQ(borders(), nullptr);
}

TEST_F(ScreenTest, ABorderOnAnotherScreenIsDrawnThere) {
  for (const QScreen* screen : screens()) {
    const ScreenPoint middle = middleOf(*screen);
    const ScreenRectangle place{middle.x - 50, middle.y - 40, middle.x + 50, middle.y + 40};

    desktop.drawFocusRectangle(place);

    const QRect drawn = lines().boundingRect();
    EXPECT_TRUE(screen->geometry().contains(drawn)) << screen->name().toStdString();
    EXPECT_NEAR(drawn.width() * screen->devicePixelRatio(), 100, 2 * screen->devicePixelRatio());
    desktop.drawFocusRectangle(place);
  }
}

}  // namespace
}  // namespace veltrin
