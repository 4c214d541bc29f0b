// SPDX-License-Identifier: GPL-3.0-or-later
// The chart of the Ping Test.
#include "ping/pingtester.h"
#include "text/statement.h"

namespace veltrin {
namespace {

constexpr Colour kWall{235, 234, 225};

}  // namespace

void pingtester::Chartit() {
  PingChart.visible = true;
  PingChart.automaticScale = false;
  setAxis();
  program_.platform.events.DoEvents();
  skip([&] { PingChart.setRowCount(Loose(Combo1.text.get()).number()); });
  std::size_t counted = 0;
  for (const ListBox& samples : buff) counted += samples.count() > 0 ? 1 : 0;
  PingChart.wallColour = kWall;
  PingChart.chartType = ChartType::Line;
  PingChart.setColumnCount(static_cast<double>(counted));
  skip([&] { PingChart.setRowCount(Val(run_.PingPasses)); });
  plot(counted);
}

// The value axis runs from the lowest to the highest figure of the rows.
void pingtester::setAxis() {
  std::string lower = pinglow[0].caption;
  std::string upper = pinghi[0].caption;
  for (std::size_t row = 1; row < kRows; ++row) {
    const std::string& low = pinglow[row].caption;
    const std::string& high = pinghi[row].caption;
    if (!low.empty() && Val(lower) > Val(low)) lower = low;
    if (!high.empty() && Val(upper) < Val(high)) upper = high;
  }
  Text2.text = "Lower = " + lower;
  PingChart.axisMinimum = Val(lower);
  Text1.text = "Upper = " + upper;
  PingChart.axisMaximum = Val(upper);
}

// The messages show each cell and value while the chart is being tried out.
void pingtester::plot(std::size_t columns) {
  for (std::size_t column = 0; column < columns; ++column) {
    for (std::size_t pass = 1; pass <= PingChart.rowCount(); ++pass) {
      program_.MsgBox(std::to_string(pass) + " - " + std::to_string(column));
      PingChart.column = column + 1;
      PingChart.row = pass;
      std::string value = buff[column].item(pass - 1);
      if (value.empty()) value = "0";
      program_.MsgBox(value);
      PingChart.setData(Val(value));
    }
  }
}

}  // namespace veltrin
