// SPDX-License-Identifier: GPL-3.0-or-later
// Draws a chart.
#pragma once

#include <QString>
#include <QWidget>

#include "forms/chart.h"

namespace veltrin {

// Every column of the chart is one line over the rows. With each painting a screen reader is
// told where the lines end, column by column, behind the chart's name.
class ChartView : public QWidget {
 public:
  explicit ChartView(QWidget* parent = nullptr);

  // The chart to draw, or none. It has to live until it is taken away again.
  void setChart(const Chart* chart);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void tellLastValues();

  const Chart* chart_ = nullptr;
  QString meaning_;  // the name without the values
};

}  // namespace veltrin
