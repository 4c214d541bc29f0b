// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/dial_scale.h"

#include <cmath>
#include <numbers>

#include <QEvent>
#include <QPainter>

#include "platform/qt/qt_text.h"
#include "text/numbers.h"
#include "view/gauge_view.h"

namespace veltrin {
namespace {

constexpr int kTicks = 10;          // parts of the scale
constexpr int kNumbers = 2;         // parts that have a number at their ends
constexpr double kTickGap = 3;      // pixels between the dial and a tick
constexpr double kShortTick = 4;    // pixels
constexpr double kLongTick = 7;     // pixels, of a tick with a number
constexpr double kNumberGap = 3;    // pixels
constexpr double kFromMiddle = 22;  // pixels from the middle to the numbers below the dial

// A place around a dial, so many pixels from its centre, at a part of its scale.
QPointF placeOn(const bkCProg& gauge, double part, double distance) {
  const double degrees = gauge.OffsetAngle + part * gauge.Span;
  const double angle = degrees * std::numbers::pi / 180;
  return QPointF(gauge.XCenter, gauge.YCenter) +
         distance * QPointF(std::sin(angle), -std::cos(angle));
}

QString numberAt(const bkCProg& gauge, double part) {
  return toQt(FormatNumber(gauge.Min + part * (gauge.Max - gauge.Min)));
}

}  // namespace

DialScale::DialScale(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

// A dial that comes up or goes changes the scale, also where the dial itself is not.
bool DialScale::event(QEvent* event) {
  if (event->type() == QEvent::Polish) {
    for (QWidget* child : parentWidget()->findChildren<QWidget*>()) child->installEventFilter(this);
  }
  return QWidget::event(event);
}

bool DialScale::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Show || event->type() == QEvent::Hide) update();
  return false;
}

const GaugeView* DialScale::seenDial() const {
  for (const QWidget* child : parentWidget()->findChildren<QWidget*>()) {
    const auto* dial = dynamic_cast<const GaugeView*>(child);
    if (dial != nullptr && dial->isVisible() && dial->gauge() != nullptr) return dial;
  }
  return nullptr;
}

void DialScale::paintEvent(QPaintEvent*) {
  const GaugeView* dial = seenDial();
  if (dial == nullptr) return;
  const bkCProg& gauge = *dial->gauge();
  const double radius = gauge.Radius + kTickGap;
  const QPointF corner = dial->pos();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(palette().color(QPalette::WindowText));
  for (int tick = 0; tick <= kTicks; ++tick) {
    const double part = static_cast<double>(tick) / kTicks;
    const double length = tick % (kTicks / kNumbers) == 0 ? kLongTick : kShortTick;
    painter.drawLine(corner + placeOn(gauge, part, radius),
                     corner + placeOn(gauge, part, radius + length));
  }
  const double middle = corner.x() + gauge.XCenter;
  const double top = corner.y() + gauge.YCenter - radius - kLongTick - kNumberGap;
  const double line = painter.fontMetrics().height();
  const QRectF above(0, top - line, width(), line);
  const QRectF below(0, height() - line, width(), line);
  painter.drawText(above, Qt::AlignHCenter, numberAt(gauge, 0.5));
  painter.drawText(QRectF(below.topLeft(), QPointF(middle - kFromMiddle, height())), Qt::AlignRight,
                   numberAt(gauge, 0));
  painter.drawText(QRectF(QPointF(middle + kFromMiddle, below.top()), below.bottomRight()),
                   Qt::AlignLeft, numberAt(gauge, 1));
  painter.drawText(below, Qt::AlignHCenter, property("unit").toString());
}

}  // namespace veltrin
