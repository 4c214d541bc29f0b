// SPDX-License-Identifier: GPL-3.0-or-later
// What it costs to draw a dial gauge anew: it takes a value, draws its face into its list of
// operations, and its view paints them onto a picture: 302 degrees of spokes with a gradient,
// the border and the needle. Beside it, in turns, bare 302 calls of QPainter::drawLine onto a
// picture of the same size, with the same pens, ready made, and nothing else.
//
//   gauge_bench [ROUNDS | --smoke]
//
// Draws off the screen when no other is chosen. Prints the medians of so many rounds (501 by
// default); ours may take twice as long as the bare lines. Then a value that is there already
// is set as often, which must paint nothing. The smoke run is of two rounds, and only what is
// painted is judged.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QApplication>
#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QPen>
#include <QWidget>

#include "controls/bkCProg.h"
#include "figures.h"
#include "table.h"
#include "view/appearance.h"
#include "view/device_painter.h"
#include "view/gauge_view.h"

namespace {

using Clock = std::chrono::steady_clock;
using veltrin::bkCProg;
using veltrin::GaugeView;
using veltrin::median;
using veltrin::microseconds;

constexpr int kUsualRounds = 501;
constexpr int kSmokeRounds = 2;
constexpr double kMost = 2;
constexpr int kSide = 96;  // pixels, as in the bandwidth monitor
constexpr int kSpan = 302;
constexpr int kTop = 100000;

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

// The spokes of a full scale as the toolkit draws them.
struct BareSpokes {
  std::vector<QPen> pens;
  std::vector<QLineF> lines;
};

BareSpokes bareSpokes(const bkCProg& gauge) {
  BareSpokes spokes;
  const QPointF centre(gauge.XCenter + 0.5, gauge.YCenter + 0.5);
  const int width = gauge.Radius / 48 + 2;
  for (int degrees = 0; degrees < kSpan; ++degrees) {
    const double turn = (gauge.OffsetAngle + degrees) * std::numbers::pi / 180;
    const QPointF way(std::sin(turn), -std::cos(turn));
    const auto place = static_cast<float>(degrees) / static_cast<float>(kSpan);
    spokes.pens.emplace_back(QPen(veltrin::toQt(gauge.ColorAt(place)), width, Qt::SolidLine,
                                  Qt::FlatCap, Qt::MiterJoin));
    spokes.lines.emplace_back(centre, centre + way * gauge.Radius);
  }
  return spokes;
}

void setUp(bkCProg& gauge) {
  gauge.Max = kTop;
  gauge.OffsetAngle = 210;
  gauge.Span = kSpan;
  gauge.BackColor = 0x95B7BD;
  gauge.ShowNeedle = true;
}

QImage emptyPicture() {
  QImage picture(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  return picture;
}

// A full scale, whose last degree the value changes by a spoke to and fro: every round has
// all the spokes to draw.
bool compareDrawing(int rounds, veltrin::Table& table) {
  bkCProg gauge;
  setUp(gauge);
  GaugeView view;
  view.resize(kSide, kSide);
  view.setGauge(&gauge);
  const BareSpokes bare = bareSpokes(gauge);
  QImage ourPicture = emptyPicture();
  QImage barePicture = emptyPicture();
  std::vector<double> ours;
  std::vector<double> lines;
  for (int round = 0; round < rounds; ++round) {
    ours.push_back(microseconds([&] {
      gauge.Value = round % 2 == 0 ? kTop : kTop - kTop / kSpan;
      view.render(&ourPicture, QPoint(), QRegion(), QWidget::DrawChildren);
    }));
    lines.push_back(microseconds([&] {
      QPainter painter(&barePicture);
      painter.setRenderHint(QPainter::Antialiasing);
      for (std::size_t at = 0; at < bare.lines.size(); ++at) {
        painter.setPen(bare.pens[at]);
        painter.drawLine(bare.lines[at]);
      }
    }));
  }
  const QPoint spoke(kSide / 4, kSide / 2);
  if (ourPicture.pixelColor(spoke).alpha() == 0 || barePicture.pixelColor(spoke).alpha() == 0) {
    std::printf("a gauge is not painted\n");
    return false;
  }
  table.add({"A dial gauge of " + std::to_string(kSpan) +
                 " degrees with a gradient, drawn anew and painted, 96 by 96 pixels",
             median(ours), "us", "as many bare `drawLine` calls with the same pens", median(lines),
             veltrin::atMost(kMost)});
  return true;
}

// A value, and then the same one over and over, in a shown window.
bool isSameValueFree(int times, veltrin::Table& table) {
  bkCProg gauge;
  setUp(gauge);
  GaugeView view;
  view.resize(kSide, kSide);
  view.setGauge(&gauge);
  view.show();
  PaintCount paints(view);
  const auto start = Clock::now();
  while (paints.count == 0 && Clock::now() - start < std::chrono::seconds(5)) {
    QCoreApplication::processEvents();
  }
  if (paints.count == 0) return false;
  paints.count = 0;
  for (int i = 0; i < times; ++i) {
    gauge.Value = 50;
    QCoreApplication::processEvents();
  }
  table.add({"Paintings for the same value again, " + std::to_string(times) + " times",
             static_cast<double>(paints.count), "", "", std::nullopt, veltrin::atMost(0)});
  return paints.count == 0;
}

}  // namespace

int main(int argc, char** argv) {
  const bool isSmoke = argc > 1 && std::string_view(argv[1]) == "--smoke";
  const int asked = argc > 1 ? std::max(1, std::atoi(argv[1])) : kUsualRounds;
  const int rounds = isSmoke ? kSmokeRounds : asked;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const QApplication application(argc, argv);
  veltrin::setAppearance();
  veltrin::Table table(!isSmoke);
  const bool isDrawn = compareDrawing(rounds, table);
  const bool isFree = isSameValueFree(rounds, table);
  return isDrawn && isFree ? table.exitCode() : EXIT_FAILURE;
}
