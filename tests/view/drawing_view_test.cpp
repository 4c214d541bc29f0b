// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures that the program draws, in the pixels of the screen.
#include "view/drawing_view.h"

#include <cmath>

#include <QAccessible>
#include <QElapsedTimer>
#include <QImage>

#include "route/MonOut.h"
#include "route/Stability.h"
#include "view_test.h"

namespace veltrin {
namespace {

constexpr Colour kWhite{255, 255, 255};

// Counts the paintings of a widget.
class PaintCount : public QObject {
 public:
  explicit PaintCount(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
  int count = 0;
};

class DrawingViewTest : public ViewTest {
 protected:
  DrawingViewTest() {
    picture.scale = UserScale{100, 50};
    picture.backColour = Colour{10, 20, 30};
    view.setAccessibleName("Times");
    view.setPicture(&picture);
    picture.observe([this] { view.noteChange(); });
    view.resize(200, 100);
  }

  void line(PicturePoint from, PicturePoint to) { picture.Line(from, to, kWhite); }

  // The view's pixels on a screen of that scale.
  QImage atScale(double scale) {
    QImage image(view.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::magenta);
    view.render(&image);
    return image;
  }

  static bool isGround(const QImage& image, int x, int y) {
    return image.pixelColor(x, y) == QColor(10, 20, 30);
  }
  static bool isLine(const QImage& image, int x, int y) {
    return image.pixelColor(x, y).green() > 128;
  }

  // The line's own colour where it crosses the middle of the picture, near a row.
  static QColor brightest(const QImage& image, int row) {
    QColor best;
    for (int y = row - 3; y <= row + 3; ++y) {
      const QColor pixel = image.pixelColor(image.width() / 2, y);
      if (pixel.red() + pixel.green() > best.red() + best.green()) best = pixel;
    }
    return best;
  }

  // Shows the view, painted as it is now.
  void show() {
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    settle();
  }

  // Waits until nothing is left to be painted.
  static void settle() {
    QTest::qWait(50);
    QCoreApplication::processEvents();
  }

  PictureBox picture;
  DrawingView view;
};

TEST_F(DrawingViewTest, TheUserScaleIsTheWholeWidgetAtEveryScaleOfTheScreen) {
  line({0, 25}, {50, 25});

  for (const double scale : {1.0, 1.5, 2.0}) {
    const QImage image = atScale(scale);
    const auto pixel = [=](double place) { return static_cast<int>(std::floor(place * scale)); };
    EXPECT_TRUE(isLine(image, 0, pixel(50))) << scale;
    EXPECT_TRUE(isLine(image, pixel(99), pixel(50))) << scale;
    EXPECT_TRUE(isGround(image, pixel(102), pixel(50))) << scale;
    EXPECT_TRUE(isGround(image, pixel(50), pixel(47))) << scale;
    EXPECT_TRUE(isGround(image, pixel(50), pixel(52))) << scale;
  }
}

// Were it painted at 100 percent and made larger, no row would be bare beside a full one.
TEST_F(DrawingViewTest, ALineIsSharpAtTwiceTheScale) {
  line({0, 25}, {100, 25});

  const QImage image = atScale(2);

  int touched = 0;
  for (int y = 0; y < image.height(); ++y) {
    if (!isGround(image, 200, y)) ++touched;
  }
  EXPECT_GE(touched, 2);
  EXPECT_LE(touched, 4) << "1.2 pixels are 2.4 of the screen's";
}

TEST_F(DrawingViewTest, WhatLiesAboveThePictureIsCutOff) {
  line({10, -20}, {90, -20});

  const QImage image = atScale(1);

  for (int x = 0; x < image.width(); ++x) {
    for (int y = 0; y < image.height(); ++y) ASSERT_TRUE(isGround(image, x, y)) << x << ' ' << y;
  }
}

TEST_F(DrawingViewTest, ALineThatGoesOutOfThePictureIsSeenAsFarAsItIsInside) {
  line({50, 25}, {50, -50});

  const QImage image = atScale(1);

  EXPECT_TRUE(isLine(image, 99, 0) || isLine(image, 100, 0));
  EXPECT_TRUE(isLine(image, 99, 45) || isLine(image, 100, 45));
  EXPECT_TRUE(isGround(image, 99, 55) && isGround(image, 100, 55));
}

TEST_F(DrawingViewTest, ALineOnAnEdgeIsSeenInItsWholeWidth) {
  line({0, 0}, {100, 0});
  line({0, 50}, {100, 50});

  const QImage image = atScale(2);

  const int last = image.height() - 1;
  for (const int row : {0, 1, last - 1, last}) {
    EXPECT_EQ(image.pixelColor(20, row), QColor(Qt::white)) << row;
  }
}

// Values of a whole number's range: the line goes up out of the picture and comes back.
TEST_F(DrawingViewTest, AnEndlessPeakIsAPeak) {
  line({40, 25}, {50, -2147483648.0});
  line({50, -2147483648.0}, {60, 25});

  const QImage image = atScale(1);

  EXPECT_TRUE(isLine(image, 79, 20) || isLine(image, 80, 20));
  EXPECT_TRUE(isLine(image, 119, 20) || isLine(image, 120, 20));
  EXPECT_TRUE(isGround(image, 100, 20));
}

// As in the download test, whose longest curve has nine points for each column.
TEST_F(DrawingViewTest, ASinglePeakAmongThousandsOfPointsIsSeen) {
  picture.scale = UserScale{6000, 50};
  for (int at = 0; at < 5999; ++at) {
    const auto placeOf = [](int x) {
      return PicturePoint{static_cast<double>(x), x == 3001 ? 5.0 : 40.0};
    };
    line(placeOf(at), placeOf(at + 1));
  }

  const QImage image = atScale(1);

  EXPECT_TRUE(isLine(image, 99, 20) || isLine(image, 100, 20));
  EXPECT_TRUE(isLine(image, 50, 79) && isLine(image, 150, 79));
  EXPECT_TRUE(isGround(image, 97, 20) && isGround(image, 103, 20));
}

TEST_F(DrawingViewTest, FaintRulesDivideTheGroundIntoParts) {
  view.setProperty(kPartsProperty, QSize(4, 2));

  const QImage image = atScale(1);

  for (const int x : {50, 100, 150}) EXPECT_FALSE(isGround(image, x, 25)) << x;
  EXPECT_FALSE(isGround(image, 25, 50));
  EXPECT_TRUE(isGround(image, 25, 25));
  EXPECT_TRUE(isGround(image, 0, 25) && isGround(image, 199, 25));
  EXPECT_LT(image.pixelColor(50, 25).green(), 80);
}

TEST_F(DrawingViewTest, ARuleIsOnePixelOfTheScreenAtEveryScale) {
  view.setProperty(kPartsProperty, QSize(4, 1));

  for (const double scale : {1.0, 1.5, 2.0}) {
    const QImage image = atScale(scale);
    int ruled = 0;
    for (int x = 0; x < image.width(); ++x) ruled += isGround(image, x, 10) ? 0 : 1;
    EXPECT_EQ(ruled, 3) << scale;
  }
}

TEST_F(DrawingViewTest, EveryLineHasItsColour) {
  picture.Line({0, 10}, {100, 10}, {255, 0, 0});
  picture.Line({0, 40}, {100, 40}, {0, 255, 0});

  const QImage image = atScale(2);

  EXPECT_GT(brightest(image, 40).red(), 200);
  EXPECT_LT(brightest(image, 40).green(), 30);
  EXPECT_GT(brightest(image, 160).green(), 200);
  EXPECT_LT(brightest(image, 160).red(), 30);
}

TEST_F(DrawingViewTest, TheGroundReachesEveryEdgeAtEveryScale) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    const QImage image = atScale(scale);
    for (int x = 0; x < image.width(); ++x) {
      for (int y = 0; y < image.height(); ++y) ASSERT_TRUE(isGround(image, x, y)) << scale;
    }
  }
}

TEST_F(DrawingViewTest, WithoutAColourTheGroundIsThatOfTheMenusTexts) {
  QPalette menus = QApplication::palette("QMenu");
  const QPalette before = menus;
  menus.setColor(QPalette::WindowText, QColor(1, 2, 3));
  QApplication::setPalette(menus, "QMenu");
  picture.backColour = std::nullopt;

  const QColor ground = atScale(1).pixelColor(5, 5);

  QApplication::setPalette(before, "QMenu");
  EXPECT_EQ(ground, QColor(1, 2, 3));
}

TEST_F(DrawingViewTest, APictureThatIsClearedIsEmpty) {
  line({0, 25}, {100, 25});
  picture.Cls();

  EXPECT_TRUE(isGround(atScale(1), 100, 50));
}

TEST_F(DrawingViewTest, AThousandDrawingsBeforeTheNextPaintingArePaintedOnce) {
  show();
  PaintCount paints(view);

  for (int i = 0; i < 1000; ++i) line({0, 25}, {100, static_cast<double>(i % 50)});
  settle();

  EXPECT_EQ(paints.count, 1);
}

// The time is real: it is the screen's frames that count.
TEST_F(DrawingViewTest, APictureIsPaintedOnceAFrameHoweverOftenItIsDrawn) {
  show();
  PaintCount paints(view);
  QElapsedTimer time;
  time.start();

  int drawings = 0;
  while (time.elapsed() < 100 || (paints.count < 2 && time.elapsed() < 10000)) {
    picture.Cls();
    line({0, 25}, {100, static_cast<double>(++drawings % 50)});
    QCoreApplication::processEvents();
  }
  const double frames = static_cast<double>(time.elapsed()) / (1000.0 / 60);

  EXPECT_GT(drawings, 20);
  EXPECT_GE(paints.count, 2);
  EXPECT_LE(paints.count, frames + 1);
}

TEST_F(DrawingViewTest, TheLastOfManyDrawingsIsPainted) {
  show();
  line({0, 10}, {100, 10});
  QCoreApplication::processEvents();
  PaintCount paints(view);

  picture.Cls();
  line({0, 40}, {100, 40});
  settle();

  EXPECT_EQ(paints.count, 1);
  EXPECT_EQ(view.accessibleName(), "Times 10");
}

TEST_F(DrawingViewTest, APictureThatWasDrawnOutOfSightIsPaintedWhenItIsShown) {
  show();
  view.hide();
  line({0, 40}, {100, 38});
  settle();

  PaintCount paints(view);
  show();

  EXPECT_EQ(paints.count, 1);
  EXPECT_EQ(view.accessibleName(), "Times 12");

  line({0, 40}, {100, 36});
  settle();
  EXPECT_EQ(view.accessibleName(), "Times 14");
}

TEST_F(DrawingViewTest, AScreenReaderIsToldTheLastValueBehindTheName) {
  line({0, 50}, {50, 20});
  line({50, 20}, {100, 27});

  atScale(1);

  QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&view);
  EXPECT_EQ(reader->text(QAccessible::Name), "Times 23");
}

TEST_F(DrawingViewTest, AnEmptyPictureHasItsNameAlone) {
  line({0, 50}, {50, 20});
  atScale(1);
  picture.Cls();
  atScale(1);

  EXPECT_EQ(view.accessibleName(), "Times");
}

TEST_F(DrawingViewTest, AViewWithoutAPictureIsItsGround) {
  line({0, 25}, {100, 25});
  view.setPicture(nullptr);

  const QImage image = atScale(1);

  EXPECT_EQ(image.pixelColor(100, 50), QApplication::palette("QMenu").color(QPalette::WindowText));
}

TEST_F(DrawingViewTest, ACurveOfTheProgramReachesItsWidget) {
  const auto form = shown<MonOut>();

  program.shared<OutageValues>().graph.DrawUsage(23, form->OGraph, 700, kWhite);
  settle();

  EXPECT_EQ(widget("OGraph")->accessibleName(), "Round trips in milliseconds 23");
  EXPECT_EQ(window->grab().toImage().pixelColor(widget("OGraph")->geometry().center() *
                                                window->devicePixelRatioF()),
            QColor(0x53, 0x39, 0x04));
}

TEST_F(DrawingViewTest, AWindowThatIsUnloadedLeavesNoObserverBehind) {
  shown<Stability>();
  const auto form = shown<MonOut>();
  program.unload(*form);
  atRest([] {});

  form->OGraph.Line({0, 0}, {1, 1}, kWhite);
  form->OGraph.scale = UserScale{1, 1};
  form->OGraph.backColour = std::nullopt;
  form->height = 6700;
  form->OGraph.Cls();

  EXPECT_EQ(desktop.windowOf(*form), nullptr);
}

}  // namespace
}  // namespace veltrin
