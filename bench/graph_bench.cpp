// SPDX-License-Identifier: GPL-3.0-or-later
// What it costs to draw the curves of the long tests: a value is taken into a strip graph,
// which draws its whole curve anew into a picture, which its shown widget then paints. One
// curve of 1800 points as in the Outage monitor, and thirty of 100 points as in the Hop
// Stability Test. Beside it, in turns, bare widgets of the same size in windows like the
// other one call QPainter::drawPolyline with the same points, ready in pixels, and the same
// pen, and QPainter::drawLines with the pieces between them, and paint nothing else.
//
// Behind them comes the loop in which the download test draws 6000 samples: each of them is
// taken into the curve, events run, and a millisecond is waited. The time of the processor
// that a sample takes, its share of the paintings with it, stands beside that of one bare
// drawPolyline of the curve.
//
//   graph_bench [ROUNDS | --smoke]
//
// Draws off the screen when no other is chosen. Prints the medians of so many rounds (501
// by default); ours may take 3 times as long as the quicker one of the others. The smoke run is of
// two rounds, and only what is painted is judged.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QPen>
#include <QPolygonF>
#include <QThread>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include "download/speed_graph.h"
#include "figures.h"
#include "forms/strip_graph.h"
#include "table.h"
#include "view/appearance.h"
#include "view/drawing_view.h"

namespace {

using Clock = std::chrono::steady_clock;
using veltrin::Colour;
using veltrin::DrawingView;
using veltrin::median;
using veltrin::microseconds;
using veltrin::PictureBox;
using veltrin::StripGraph;

constexpr int kUsualRounds = 501;
constexpr int kSmokeRounds = 2;
constexpr double kMost = 3;
constexpr double kLineWidth = 1.2;  // pixels, that of DrawingView
constexpr Colour kWhite{255, 255, 255};

// A curve as the toolkit draws it: as a polyline or in pieces.
class BareCurve : public QWidget {
 public:
  BareCurve(QWidget* parent, bool inPieces) : QWidget(parent), inPieces_(inPieces) {
    setAttribute(Qt::WA_OpaquePaintEvent);
  }

  void setPoints(const QPolygonF& points) {
    points_ = points;
    pieces_.clear();
    for (qsizetype at = 1; at < points.size(); ++at) {
      pieces_.append({points[at - 1], points[at]});
    }
  }

  int paintings = 0;

 protected:
  void paintEvent(QPaintEvent*) override {
    ++paintings;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, kLineWidth, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    if (inPieces_) {
      painter.drawLines(pieces_);
    } else {
      painter.drawPolyline(points_);
    }
  }

 private:
  bool inPieces_;
  QPolygonF points_;
  QList<QLineF> pieces_;
};

// The windows in which the curves are painted.
struct Boards {
  QWidget ours;
  QWidget polylines;
  QWidget pieces;
};

// A curve of so many values in its picture and its widget, and the same curve bare.
template <std::size_t Count>
class Curves {
 public:
  // `height` is that of the picture's scale.
  Curves(Boards& boards, const QRect& place, double height)
      : height_(height),
        view_(&boards.ours),
        polyline_(&boards.polylines, false),
        pieces_(&boards.pieces, true) {
    picture_.scale = veltrin::UserScale{static_cast<double>(Count), height};
    picture_.observe([this] { view_.noteChange(); });
    view_.setPicture(&picture_);
    for (QWidget* each : std::initializer_list<QWidget*>{&view_, &polyline_, &pieces_}) {
      each->setGeometry(place);
    }
    for (std::size_t at = 0; at < Count; ++at) graph_.DrawUsage(next(), picture_, height_, kWhite);
  }
  ~Curves() { picture_.observe({}); }
  Curves(const Curves&) = delete;
  Curves& operator=(const Curves&) = delete;

  // Takes a value in, as a window does, and asks for the painting.
  void draw() {
    graph_.DrawUsage(next(), picture_, height_, kWhite);
    view_.update();
  }
  void drawPolyline() { polyline_.update(); }
  void drawPieces() { pieces_.update(); }

  // Gives the bare widgets the curve as it is now.
  void copy() {
    QPolygonF points;
    const double across = view_.width() / static_cast<double>(Count);
    const double down = (view_.height() - kLineWidth) / height_;
    double x = 0;
    for (const int value : graph_.points()) {
      points.append({x++ * across, kLineWidth / 2 + (height_ - value) * down});
    }
    polyline_.setPoints(points);
    pieces_.setPoints(points);
  }

  // Whether each side was painted with every value. The value is that which a screen
  // reader is told with a painting.
  bool arePainted(int paintings) const {
    return view_.accessibleName().trimmed() == QString::number(graph_.points().back()) &&
           polyline_.paintings >= paintings && pieces_.paintings >= paintings;
  }

 private:
  // An even line with a jitter and peaks, as of a connection.
  int next() {
    ++number_;
    return 30 + static_cast<int>(number_ * number_ * 31 % 13 + (number_ % 37 == 0 ? 150 : 0));
  }

  double height_;
  unsigned number_ = 0;
  StripGraph<Count> graph_;
  PictureBox picture_;
  DrawingView view_;
  BareCurve polyline_;
  BareCurve pieces_;
};

// The time of the processor that some work takes; a machine that does much else keeps a loop
// of seconds waiting now and then.
template <class Work>
double processorMicroseconds(Work work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) * 1e6 / CLOCKS_PER_SEC;
}

// Paints what asked for it, each window in one pass.
void paint() { QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest); }

bool isShown(const QWidget& board) {
  const auto start = Clock::now();
  while (!board.windowHandle()->isExposed() && Clock::now() - start < std::chrono::seconds(5)) {
    QCoreApplication::processEvents();
  }
  QCoreApplication::processEvents();
  return board.windowHandle()->isExposed();
}

template <std::size_t Count>
using Set = std::vector<std::unique_ptr<Curves<Count>>>;

// The medians of so many rounds, in microseconds; none when a curve was not painted.
struct Medians {
  double ours = 0;
  double polylines = 0;
  double pieces = 0;
};
template <std::size_t Count>
std::optional<Medians> measure(const Set<Count>& set, int rounds) {
  std::vector<double> ours;
  std::vector<double> polylines;
  std::vector<double> pieces;
  const auto note = [&set](std::vector<double>& times, void (Curves<Count>::*draw)()) {
    times.push_back(microseconds([&] {
      for (const auto& curves : set) (*curves.*draw)();
      paint();
    }));
  };
  for (int round = 1; round <= rounds; ++round) {
    note(ours, &Curves<Count>::draw);
    for (const auto& curves : set) curves->copy();
    note(polylines, &Curves<Count>::drawPolyline);
    note(pieces, &Curves<Count>::drawPieces);
    for (const auto& curves : set) {
      if (!curves->arePainted(round)) return {};
    }
  }
  return Medians{median(ours), median(polylines), median(pieces)};
}

// Draws and paints so many curves of that size in each round; whether they were seen.
template <std::size_t Count>
bool compare(const std::string& what, int curves, const QSize& size, double height, int rounds,
             veltrin::Table& table) {
  Boards boards;
  Set<Count> set;
  for (int at = 0; at < curves; ++at) {
    const QRect place(QPoint(at % 2 * (size.width() + 20), at / 2 * (size.height() + 3)), size);
    set.push_back(std::make_unique<Curves<Count>>(boards, place, height));
  }
  for (QWidget* board : {&boards.ours, &boards.polylines, &boards.pieces}) {
    board->resize(board->childrenRect().size());
    board->show();
    if (!isShown(*board)) return false;
  }
  const auto medians = measure(set, rounds);
  if (!medians) {
    std::printf("%s: a curve is not painted\n", what.c_str());
    return false;
  }
  const bool arePiecesQuicker = medians->pieces < medians->polylines;
  const auto goal = [](bool isQuicker) {
    return isQuicker ? std::optional(veltrin::atMost(kMost)) : std::nullopt;
  };
  table.add({what, medians->ours, "us", "bare `drawLines` of the same pieces", medians->pieces,
             goal(arePiecesQuicker)});
  table.add({"The same", medians->ours, "us", "a bare `drawPolyline` of the same points",
             medians->polylines, goal(!arePiecesQuicker)});
  return true;
}

// The window of the download test as far as its curve goes.
class DownloadLoop {
 public:
  static constexpr std::size_t kPicture = 5;
  static constexpr std::size_t kScale = 0;
  static constexpr QSize kSize{648, 210};

  DownloadLoop() : view_(&board_), polyline_(&bare_, false) {
    picture_.scale = veltrin::UserScale{static_cast<double>(graph_.UsageF.points().size()),
                                        static_cast<double>(veltrin::kSpeedHeights[kScale])};
    picture_.observe([this] { view_.noteChange(); });
    view_.setProperty(veltrin::kPartsProperty, QSize(10, 5));
    view_.setPicture(&picture_);
    beat_.callOnTimeout([this] {
      longestSilence_ = std::max(longestSilence_, silence_.restart());
      ++beats_;
    });
    for (QWidget* each : std::initializer_list<QWidget*>{&view_, &polyline_}) each->resize(kSize);
  }
  ~DownloadLoop() { picture_.observe({}); }
  DownloadLoop(const DownloadLoop&) = delete;
  DownloadLoop& operator=(const DownloadLoop&) = delete;

  bool show() {
    for (QWidget* board : {&board_, &bare_}) {
      board->resize(kSize);
      board->show();
      if (!isShown(*board)) return false;
    }
    return true;
  }

  // Draws so many samples; what one of them takes but its millisecond.
  double draw(int samples) {
    double work = 0;
    silence_.start();
    beat_.start(kBeat);
    for (int sample = 0; sample < samples; ++sample) {
      work += processorMicroseconds([&] {
        graph_.DrawUsage(kScale, speedOf(sample), picture_, static_cast<int>(kPicture));
        QCoreApplication::processEvents();
      });
      QThread::usleep(1000);
    }
    beat_.stop();
    return work / samples;
  }

  // One bare polyline of the curve as it is now.
  double drawPolyline() {
    QPolygonF points;
    const double across = view_.width() / picture_.scale.get().width;
    const double down = (view_.height() - kLineWidth) / picture_.scale.get().height;
    for (const int value : graph_.UsageF.points()) {
      const double y = picture_.scale.get().height - value;
      points.append({static_cast<double>(points.size()) * across, kLineWidth / 2 + y * down});
    }
    polyline_.setPoints(points);
    polyline_.update();
    return processorMicroseconds(paint);
  }

  // Whether the last sample came to be seen.
  bool isPainted() {
    view_.update();
    paint();
    return view_.accessibleName().trimmed() == QString::number(graph_.UsageF.points().back()) &&
           polyline_.paintings > 0;
  }

  qint64 longestSilence() const { return longestSilence_; }
  int beats() const { return beats_; }

 private:
  static constexpr int kBeat = 5;  // ms

  // Between 60 and 95 Mbps, and less for a while now and then.
  static std::int32_t speedOf(int sample) {
    const int speed = 60000 + sample * 7919 % 35000;
    return sample % 700 < 30 ? speed / 4 : speed;
  }

  QWidget board_;
  QWidget bare_;
  veltrin::SpeedGraph graph_;
  PictureBox picture_;
  DrawingView view_;
  BareCurve polyline_;
  QTimer beat_;
  QElapsedTimer silence_;
  qint64 longestSilence_ = 0;
  int beats_ = 0;
};

bool compareDownloadLoop(int samples, int rounds, veltrin::Table& table) {
  DownloadLoop loop;
  if (!loop.show()) return false;
  const double ours = loop.draw(samples);
  std::vector<double> polylines;
  polylines.reserve(static_cast<std::size_t>(rounds));
  for (int round = 0; round < rounds; ++round) polylines.push_back(loop.drawPolyline());
  if (!loop.isPainted() || loop.beats() == 0) {
    std::printf("the loop of the download test: the curve is not painted\n");
    return false;
  }
  const double bare = median(polylines);
  table.add({"A sample in the loop that draws the download test, " + std::to_string(samples) +
                 " samples into a curve of 6,000, with its share of the paintings",
             ours, "us", "a bare `drawPolyline` of the same points", bare, veltrin::atMost(kMost)});
  table.add({"The longest time that a timer waited in that loop",
             static_cast<double>(loop.longestSilence()), "ms", "", std::nullopt, std::nullopt});
  return true;
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
  const bool isLongDrawn = compare<1800>(
      "A value into a curve of 1,800 points, drawn anew and painted, 656 by 118 pixels", 1,
      {656, 118}, 700, rounds, table);
  const bool areHopsDrawn =
      compare<100>("A value into each of 30 curves of 100 points, 253 by 41 pixels", 30, {253, 41},
                   300, rounds, table);
  const bool isDownloadDrawn = compareDownloadLoop(isSmoke ? 20 : 6000, isSmoke ? 1 : 21, table);
  return isLongDrawn && areHopsDrawn && isDownloadDrawn ? table.exitCode() : EXIT_FAILURE;
}
