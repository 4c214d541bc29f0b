// SPDX-License-Identifier: GPL-3.0-or-later
// Photographs of dial gauges, for people to look at.
#include <functional>

#include <QPixmap>

#include "controls/bkCProg.h"
#include "view/gauge_view.h"
#include "view_test.h"

namespace veltrin {
namespace {

constexpr int kAcross = 5;  // dials in a row
constexpr int kSide = 96;   // pixels of a dial
constexpr int kGap = 12;

// A board of dials, each set in its own way.
class DialPictures : public testing::Test {
 protected:
  // Adds a dial.
  void dial(const std::function<void(bkCProg&)>& set) {
    auto& gauge = *gauges.emplace_back(std::make_unique<bkCProg>());
    auto* view = new GaugeView(&board);
    const int at = static_cast<int>(gauges.size()) - 1;
    view->setGeometry(kGap + at % kAcross * (kSide + kGap), kGap + at / kAcross * (kSide + kGap),
                      kSide, kSide);
    set(gauge);
    view->setGauge(&gauge, [](const std::string& name) {
      return QIcon(toQt(SHARE_FOLDER "/icons/" + name + "-200.png"));
    });
  }

  // Saves the board as it looks at the scale of the screen, and looks whether each dial has
  // been painted.
  void photograph(const std::string& name) {
    const int rows = (static_cast<int>(gauges.size()) + kAcross - 1) / kAcross;
    board.setFixedSize(kGap + kAcross * (kSide + kGap), kGap + rows * (kSide + kGap));
    board.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&board));
    QTest::qWait(50);
    const double scale = board.devicePixelRatioF();
    const QPixmap picture = board.grab();
    std::filesystem::create_directories(PICTURE_FOLDER);
    const std::string file =
        std::string(PICTURE_FOLDER) + "/" + name + "-" + fromQt(QString::number(scale)) + ".png";
    EXPECT_TRUE(picture.save(toQt(file))) << file;
    const QImage pixels = picture.toImage();
    const QColor ground = board.palette().color(QPalette::Window);
    for (const auto* view : board.findChildren<QWidget*>()) {
      EXPECT_GT(differing(pixels, view->geometry(), ground, scale), 50) << view->x() << view->y();
    }
  }

  // How many pixels of a part of a picture have another colour.
  static int differing(const QImage& pixels, const QRect& part, const QColor& colour,
                       double scale) {
    int count = 0;
    for (int y = 0; y < part.height(); ++y) {
      for (int x = 0; x < part.width(); ++x) {
        const QPoint place(static_cast<int>((part.x() + x) * scale),
                           static_cast<int>((part.y() + y) * scale));
        if (pixels.pixelColor(place) != colour) ++count;
      }
    }
    return count;
  }

  std::vector<std::unique_ptr<bkCProg>> gauges;
  QWidget board;
};

// As the bandwidth monitor has them.
void setMonitor(bkCProg& gauge) {
  gauge.Max = 1000;
  gauge.OffsetAngle = 210;
  gauge.Span = 302;
  gauge.BackColor = 0x95B7BD;
  gauge.MidColor = 0xC0;
  gauge.EndColor = 0xFF;
  gauge.NeedleColor = 0xC0;
  gauge.ShowNeedle = true;
}

TEST_F(DialPictures, Monitor) {
  for (const int value : {0, 1, 120, 512, 949}) {
    dial([value](bkCProg& gauge) {
      setMonitor(gauge);
      gauge.Value = value;
    });
  }
  photograph("dials-monitor");
}

TEST_F(DialPictures, Scales) {
  for (const int span : {360, 302, 45}) {
    for (const bool isClockwise : {true, false}) {
      dial([=](bkCProg& gauge) {
        gauge.Span = span;
        gauge.OffsetAngle = 210;
        gauge.Clockwise = isClockwise;
        gauge.CircleColor = 0xFFFFFF;
        gauge.Value = 65;
      });
    }
  }
  dial([](bkCProg& gauge) {
    gauge.Tricolor = false;
    gauge.Value = 100;
  });
  dial([](bkCProg& gauge) { gauge.Value = 100; });
  dial([](bkCProg& gauge) {
    gauge.Fade = true;
    gauge.Gradient = false;
    gauge.Value = 75;
  });
  dial([](bkCProg& gauge) {
    gauge.Gradient = false;
    gauge.Value = 75;
    gauge.BorderWidth = 5;
  });
  photograph("dials-scales");
}

TEST_F(DialPictures, Ticks) {
  for (int position = kTicksInside; position <= kTicksAcross; ++position) {
    for (int style = kLineTicks; style <= kHollowSquares; ++style) {
      dial([=](bkCProg& gauge) {
        gauge.CircleColor = 0xFFFFFF;
        gauge.ShowArc = false;
        gauge.ShowNeedle = true;
        gauge.TickStyle = style;
        gauge.TickPosition = position;
        gauge.TickSize = 6;
        gauge.Value = 65;
      });
    }
  }
  photograph("dials-ticks");
}

TEST_F(DialPictures, TextsAndShapes) {
  dial([](bkCProg& gauge) {
    gauge.ShowValue = true;
    gauge.Value = 64;
  });
  dial([](bkCProg& gauge) {
    gauge.ShowValue = true;
    gauge.ShowValueAsPercent = true;
    gauge.TextShadow = true;
    gauge.Font = DeviceFont{"DejaVu Serif", 14, true, false};
    gauge.Value = 64;
  });
  dial([](bkCProg& gauge) {
    gauge.Inset = true;
    gauge.Value = 64;
  });
  dial([](bkCProg& gauge) {
    gauge.AutoMask = true;
    gauge.BackColor = 0xFF00FF;
    gauge.Value = 64;
  });
  dial([](bkCProg& gauge) {
    gauge.Picture = DevicePicture{"bandwidth", nullptr, 32, 32};
    gauge.Value = 30;
  });
  dial([](bkCProg& gauge) {
    gauge.MaskPicture = DevicePicture{"bandwidth", nullptr, 32, 32};
    gauge.MaskColor = 0;
    gauge.UseMask = true;
    gauge.Value = 100;
  });
  dial([](bkCProg& gauge) {
    gauge.Span = 270;
    gauge.OffsetAngle = 225;
    gauge.AutoMask = true;
    gauge.CircleColor = 0xFFFFFF;
    gauge.ShowNeedle = true;
  });
  photograph("dials-texts");
}

}  // namespace
}  // namespace veltrin
