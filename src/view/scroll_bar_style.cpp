// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/scroll_bar_style.h"

#include <algorithm>

#include <QPolygonF>
#include <QTransform>

namespace veltrin {
namespace {

constexpr double kHandleInset = 3;    // pixels between the handle and the sides of the groove
constexpr double kArrowHeight = 3.5;  // pixels; it is twice as wide
constexpr int kRestLighter = 115;     // percent
constexpr int kHeldDarker = 140;

bool isUnderPointer(const QStyleOptionSlider& bar, QStyle::SubControl part) {
  return (bar.state & QStyle::State_Enabled) && (bar.state & QStyle::State_MouseOver) &&
         (bar.activeSubControls & part);
}

bool isHeld(const QStyleOptionSlider& bar, QStyle::SubControl part) {
  return (bar.state & QStyle::State_Enabled) && (bar.state & QStyle::State_Sunken) &&
         (bar.activeSubControls & part);
}

// Of the handle and the arrows.
QColor inkOf(const QStyleOptionSlider& bar, QStyle::SubControl part) {
  const QColor ink = bar.palette.color(QPalette::Active, QPalette::Shadow);
  if (isHeld(bar, part)) return ink.darker(kHeldDarker);
  return isUnderPointer(bar, part) ? ink : ink.lighter(kRestLighter);
}

void drawHandle(const QRectF& place, const QStyleOptionSlider& bar, QPainter& painter) {
  const bool isUpright = bar.orientation == Qt::Vertical;
  const QRectF handle = isUpright ? place.adjusted(kHandleInset, 1, -kHandleInset, -1)
                                  : place.adjusted(1, kHandleInset, -1, -kHandleInset);
  const double corner = std::min(handle.width(), handle.height()) / 2;
  painter.setBrush(inkOf(bar, QStyle::SC_ScrollBarSlider));
  painter.drawRoundedRect(handle, corner, corner);
}

// An arrow that points up, turned a quarter as often as it takes.
QPolygonF arrowAt(const QPointF& centre, int quarters) {
  constexpr int kQuarter = 90;  // degrees
  const QPolygonF up{QPointF(0, -kArrowHeight / 2), QPointF(kArrowHeight, kArrowHeight / 2),
                     QPointF(-kArrowHeight, kArrowHeight / 2)};
  return QTransform().rotate(quarters * kQuarter).map(up).translated(centre);
}

int quartersOf(const QStyleOptionSlider& bar, bool isForward) {
  if (bar.orientation == Qt::Vertical) return isForward ? 2 : 0;
  return isForward == (bar.direction == Qt::LeftToRight) ? 1 : 3;
}

void drawArrow(const QStyle& style, const QStyleOptionSlider& bar, QStyle::SubControl part,
               QPainter& painter, const QWidget* widget) {
  const QRectF place = style.subControlRect(QStyle::CC_ScrollBar, &bar, part, widget);
  painter.setBrush(inkOf(bar, part));
  painter.drawPolygon(
      arrowAt(place.center(), quartersOf(bar, part == QStyle::SC_ScrollBarAddLine)));
}

}  // namespace

void drawScrollBar(const QStyle& style, const QStyleOptionSlider& bar, QPainter& painter,
                   const QWidget* widget) {
  painter.save();
  painter.fillRect(bar.rect, bar.palette.color(QPalette::Window));
  if (bar.maximum > bar.minimum) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    drawHandle(style.subControlRect(QStyle::CC_ScrollBar, &bar, QStyle::SC_ScrollBarSlider, widget),
               bar, painter);
    for (const auto part : {QStyle::SC_ScrollBarSubLine, QStyle::SC_ScrollBarAddLine}) {
      drawArrow(style, bar, part, painter, widget);
    }
  }
  painter.restore();
}

}  // namespace veltrin
