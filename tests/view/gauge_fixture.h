// SPDX-License-Identifier: GPL-3.0-or-later
// A dial gauge in its view.
#pragma once

#include <array>
#include <cmath>
#include <cstdlib>

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPixmap>

#include "view/gauge_view.h"
#include "view_test.h"

namespace veltrin {

inline constexpr std::array kScales{1.0, 1.5, 2.0};

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

// A picture of two halves, the left one red and the right one of a colour that masks take.
inline QIcon halves() {
  QPixmap pixels(40, 40);
  pixels.fill(QColor(255, 0, 0));
  QPainter(&pixels).fillRect(20, 0, 20, 40, QColor(0, 255, 255));
  return pixels;
}
inline const DevicePicture kHalves{"halves", nullptr, 40, 40};

// A gauge of 101 pixels, around the middle of its pixel (50, 50).
class GaugeViewTest : public ViewTest {
 protected:
  GaugeViewTest() {
    gauge.BackColor = 0x1E140A;
    gauge.CircleColor = 0xFFFFFF;
    gauge.BorderColor = 0xFF00FF;
    view.setAccessibleName("Received");
    view.resize(101, 101);
    view.setGauge(&gauge,
                  [](const std::string& name) { return name == "halves" ? halves() : QIcon(); });
  }

  // The view's pixels on a screen of that scale, on a ground of pure blue.
  QImage atScale(double scale) {
    QImage image(view.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::blue);
    view.render(&image, QPoint(), QRegion(), QWidget::DrawChildren | QWidget::IgnoreMask);
    return image;
  }

  // The colour in the middle of a pixel of the gauge.
  static QColor colourAt(const QImage& image, double x, double y) {
    const double scale = image.devicePixelRatio();
    return image.pixelColor(static_cast<int>((x + 0.5) * scale),
                            static_cast<int>((y + 0.5) * scale));
  }

  // Shows the view, painted as it is now.
  void show() {
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    settle();
  }

  // Waits until nothing is left to be painted.
  static void settle() {
    QTest::qWait(60);
    QCoreApplication::processEvents();
  }

  bkCProg gauge;
  GaugeView view;
};

// Whether a colour is another one but for the smoothing of an edge.
inline bool isNear(const QColor& colour, const QColor& other) {
  constexpr int kMost = 70;
  return std::abs(colour.red() - other.red()) < kMost &&
         std::abs(colour.green() - other.green()) < kMost &&
         std::abs(colour.blue() - other.blue()) < kMost;
}

inline const QColor kGround(10, 20, 30);
inline const QColor kWhite(255, 255, 255);
inline const QColor kPurple(255, 0, 255);

}  // namespace veltrin
