// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/drawing_view.h"

#include <algorithm>

#include <QApplication>
#include <QPainter>

#include "view/dense_curve.h"

namespace veltrin {
namespace {

constexpr int kFrame = 17;          // ms; 60 frames in a second
constexpr double kLineWidth = 1.2;  // pixels at 100 percent
constexpr double kRuleOpacity = 0.18;

// The toolkit outlines a polyline as a whole, and what that costs grows with the square of
// its points where the outline overlaps itself. So a long one is painted in pieces of so
// many lines; their squared ends close the joints.
constexpr qsizetype kPiece = 8;

void drawCurve(QPainter& painter, const QPolygonF& curve) {
  for (qsizetype at = 0; at + 1 < curve.size(); at += kPiece) {
    const qsizetype points = std::min(kPiece + 1, curve.size() - at);
    painter.drawPolyline(curve.constData() + at, static_cast<int>(points));
  }
}

QColor toQt(const Colour& colour) { return {colour.red, colour.green, colour.blue}; }

}  // namespace

DrawingView::DrawingView(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  pause_.setSingleShot(true);
  pause_.setTimerType(Qt::PreciseTimer);
  pause_.callOnTimeout(this, [this] { update(); });
}

void DrawingView::setPicture(const PictureBox* picture) {
  picture_ = picture;
  meaning_ = accessibleName();
  told_.reset();
  update();
}

// A picture that is out of sight stays stale until it comes into sight, which paints it.
void DrawingView::makeStale() {
  isStale_ = true;
  const qint64 rest = sincePainted_.isValid() ? kFrame - sincePainted_.elapsed() : 0;
  if (rest > 0) {
    pause_.start(static_cast<int>(rest));
  } else {
    update();
  }
}

void DrawingView::paintEvent(QPaintEvent*) {
  isStale_ = false;
  pause_.stop();
  sincePainted_.start();
  QPainter painter(this);
  // One pixel more, as the edge may lie within a pixel of the screen.
  painter.fillRect(rect().adjusted(-1, -1, 1, 1), ground());
  drawRules(painter);
  if (picture_ == nullptr) return;
  painter.setRenderHint(QPainter::Antialiasing);
  drawLines(painter);
  tellLastValue();
}

QColor DrawingView::ground() const {
  if (picture_ != nullptr && picture_->backColour.get()) return toQt(*picture_->backColour.get());
  return QApplication::palette("QMenu").color(QPalette::WindowText);
}

// One pixel of the screen each, so that they are all alike; none at the edges.
void DrawingView::drawRules(QPainter& painter) const {
  const QSize parts = property(kPartsProperty).toSize();
  if (parts.isEmpty()) return;
  QColor rule(Qt::white);
  rule.setAlphaF(kRuleOpacity);
  painter.setPen(QPen(rule, 0));
  for (int at = 1; at < parts.width(); ++at) {
    const int x = at * width() / parts.width();
    painter.drawLine(x, 0, x, height());
  }
  for (int at = 1; at < parts.height(); ++at) {
    const int y = at * height() / parts.height();
    painter.drawLine(0, y, width(), y);
  }
}

// A line along an edge of the scale is seen in its whole width.
void DrawingView::drawLines(QPainter& painter) {
  const UserScale& scale = picture_->scale;
  const double across = width() / scale.width;
  const double down = (height() - kLineWidth) / scale.height;
  for (const Polyline& line : picture_->lines()) {
    curve_.clear();
    for (const PicturePoint& point : line.points) {
      curve_.append({point.x * across, kLineWidth / 2 + point.y * down});
    }
    thinOut(curve_, painter.device()->devicePixelRatioF());
    painter.setPen(
        QPen(toQt(line.colour), kLineWidth, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    drawCurve(painter, curve_);
  }
}

void DrawingView::tellLastValue() {
  std::optional<double> last;
  const auto lines = picture_->lines();
  if (!lines.empty()) last = picture_->scale.get().height - lines.back().points.back().y;
  if (last == told_) return;
  told_ = last;
  setAccessibleName(last ? meaning_ + ' ' + QString::number(*last) : meaning_);
}

}  // namespace veltrin
