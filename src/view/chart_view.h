// SPDX-License-Identifier: GPL-3.0-or-later
// Draws a chart.
#pragma once

#include <QWidget>

#include "forms/chart.h"

namespace veltrin {

// Every column of the chart is one line over the rows.
class ChartView : public QWidget {
 public:
  explicit ChartView(QWidget* parent = nullptr);

  // The chart to draw, or none. It has to live until it is taken away again.
  void setChart(const Chart* chart);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Chart* chart_ = nullptr;
};

}  // namespace veltrin
