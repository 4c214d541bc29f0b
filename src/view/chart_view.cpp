// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/chart_view.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QPainter>
#include <QPolygonF>
#include <QStringList>

namespace veltrin {
namespace {

constexpr int kSteps = 4;  // of the value axis
constexpr int kMostRowLabels = 10;
constexpr int kGap = 6;  // pixels between an axis and its labels
constexpr double kLineWidth = 2;

constexpr std::array<QRgb, 5> kLines = {0xff35627f, 0xffa8502f, 0xff4f7a3a, 0xff7b4b86, 0xff8a6d12};

// The value axis and the wall on which the lines stand.
struct Plot {
  QRectF wall;
  double lowest = 0;
  double highest = 1;
  std::size_t rows = 0;

  double x(std::size_t row) const {
    const double share = rows > 1 ? static_cast<double>(row) / static_cast<double>(rows - 1) : 0.5;
    return wall.left() + share * wall.width();
  }
  double y(double value) const {
    const double share = (value - lowest) / (highest - lowest);
    return wall.bottom() - std::clamp(share, 0.0, 1.0) * wall.height();
  }
};

void setAxis(const Chart& chart, Plot& plot) {
  plot.lowest = chart.axisMinimum;
  plot.highest = chart.axisMaximum;
  if (chart.automaticScale) {
    plot.lowest = 0;
    plot.highest = 0;
    for (std::size_t column = 0; column < chart.columnCount(); ++column) {
      for (const double value : chart.values(column)) {
        plot.lowest = std::min(plot.lowest, value);
        plot.highest = std::max(plot.highest, value);
      }
    }
  }
  if (!(plot.highest > plot.lowest)) plot.highest = plot.lowest + 1;
}

void drawValueAxis(QPainter& painter, const Plot& plot, const QColor& text, const QColor& line) {
  for (int step = 0; step <= kSteps; ++step) {
    const double value = plot.lowest + (plot.highest - plot.lowest) * step / kSteps;
    const double y = plot.y(value);
    painter.setPen(line);
    painter.drawLine(QPointF(plot.wall.left(), y), QPointF(plot.wall.right(), y));
    painter.setPen(text);
    const double height = painter.fontMetrics().height();
    painter.drawText(QRectF(0, y - height / 2, plot.wall.left() - kGap, height),
                     Qt::AlignRight | Qt::AlignVCenter, QString::number(value, 'g', 5));
  }
}

void drawRowAxis(QPainter& painter, const Plot& plot) {
  const std::size_t every = plot.rows / kMostRowLabels + 1;
  const double height = painter.fontMetrics().height();
  for (std::size_t row = 0; row < plot.rows; row += every) {
    const double x = plot.x(row);
    painter.drawText(QRectF(x - 30, plot.wall.bottom() + kGap, 60, height), Qt::AlignCenter,
                     QString::number(row + 1));
  }
}

void drawLines(QPainter& painter, const Chart& chart, const Plot& plot) {
  for (std::size_t column = 0; column < chart.columnCount(); ++column) {
    QPolygonF line;
    const std::vector<double>& values = chart.values(column);
    for (std::size_t row = 0; row < values.size(); ++row) {
      line << QPointF(plot.x(row), plot.y(values[row]));
    }
    const QColor colour(kLines[column % kLines.size()]);
    painter.setPen(QPen(colour, kLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
    painter.setBrush(colour);
    if (line.size() == 1) painter.drawEllipse(line.front(), kLineWidth, kLineWidth);
    painter.setBrush(Qt::NoBrush);
  }
}

}  // namespace

ChartView::ChartView(QWidget* parent) : QWidget(parent) {}

void ChartView::setChart(const Chart* chart) {
  chart_ = chart;
  meaning_ = accessibleName();
  update();
}

void ChartView::tellLastValues() {
  QStringList words{meaning_};
  for (std::size_t column = 0; column < chart_->columnCount(); ++column) {
    const std::vector<double>& values = chart_->values(column);
    if (!values.empty()) words += QString::number(values.back());
  }
  const QString name = words.join(' ');
  if (name != accessibleName()) setAccessibleName(name);
}

void ChartView::paintEvent(QPaintEvent*) {
  if (chart_ == nullptr) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QFontMetrics metrics = painter.fontMetrics();
  Plot plot;
  setAxis(*chart_, plot);
  plot.rows = chart_->rowCount();
  const int labels = metrics.horizontalAdvance(QStringLiteral("99999.9")) + kGap;
  plot.wall = QRectF(rect()).adjusted(labels, metrics.height(), -metrics.height(),
                                      -(metrics.height() + 2 * kGap));
  const Colour wall = chart_->wallColour;
  painter.fillRect(plot.wall, QColor(wall.red, wall.green, wall.blue));
  drawValueAxis(painter, plot, palette().color(QPalette::WindowText),
                palette().color(QPalette::Mid));
  drawRowAxis(painter, plot);
  drawLines(painter, *chart_, plot);
  tellLastValues();
}

}  // namespace veltrin
