// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/table_panel.h"

#include <QGridLayout>
#include <QPainter>
#include <QPainterPath>

namespace veltrin {
namespace {

constexpr double kCorner = 5;  // radius in pixels
constexpr double kLine = 1;

}  // namespace

void TablePanel::showEvent(QShowEvent*) {
  const auto* grid = qobject_cast<const QGridLayout*>(layout());
  for (int column = 0; grid != nullptr && column < grid->columnCount(); ++column) {
    const QLayoutItem* caption = grid->itemAtPosition(0, column);
    if (caption != nullptr && caption->widget() != nullptr) {
      caption->widget()->setForegroundRole(QPalette::PlaceholderText);
    }
  }
}

// The tint of a row reaches from the middle of the gap above it to that below it.
void TablePanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF edge = QRectF(rect()).adjusted(kLine / 2, kLine / 2, -kLine / 2, -kLine / 2);
  QPainterPath panel;
  panel.addRoundedRect(edge, kCorner, kCorner);
  painter.fillPath(panel, palette().color(QPalette::Base));
  if (const auto* grid = qobject_cast<const QGridLayout*>(layout())) {
    painter.setClipPath(panel);
    const double half = grid->verticalSpacing() / 2.0;
    for (int row = 2; row < grid->rowCount(); row += 2) {
      const QRectF cell = grid->cellRect(row, 0);
      const double bottom = row + 1 == grid->rowCount() ? edge.bottom() : cell.bottom() + half;
      painter.fillRect(QRectF(QPointF(0, cell.top() - half), QPointF(width(), bottom)),
                       palette().color(QPalette::AlternateBase));
    }
    painter.setPen(QPen(palette().color(QPalette::Mid), kLine));
    const double below = grid->cellRect(0, 0).bottom() + half + kLine / 2;
    painter.drawLine(QPointF(0, below), QPointF(width(), below));
    painter.setClipping(false);
  }
  painter.setPen(QPen(palette().color(QPalette::Mid), kLine));
  painter.drawPath(panel);
}

}  // namespace veltrin
