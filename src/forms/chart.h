// SPDX-License-Identifier: GPL-3.0-or-later
// A chart of columns of values over rows.
#pragma once

#include <cmath>
#include <cstddef>
#include <functional>
#include <vector>

#include "forms/control.h"
#include "text/statement.h"

namespace veltrin {

// Kinds of chart, by their numbers in the system.
enum class ChartType { Line = 3 };

// Every column is one line over the rows. Cells are addressed from 1 by `column`
// and `row`; `setData` fills the addressed one.
class Chart : public Control {
 public:
  Property<ChartType> chartType{ChartType::Line};
  Property<bool> automaticScale{true};  // of the value axis
  Property<double> axisMinimum{0};
  Property<double> axisMaximum{100};
  Property<Colour> wallColour{Colour{255, 255, 255}};

  std::size_t columnCount() const { return cells_.size(); }
  std::size_t rowCount() const { return rows_; }

  // Counts are rounded to whole numbers from 0 to 32767. Throw StatementFailed for
  // others.
  void setColumnCount(double count) {
    cells_.resize(checked(count), std::vector<double>(rows_));
    tell();
  }
  void setRowCount(double count) {
    rows_ = checked(count);
    for (auto& column : cells_) column.resize(rows_);
    tell();
  }

  // The addressed cell, from 1.
  std::size_t column = 1;
  std::size_t row = 1;

  // Throws StatementFailed when the addressed cell does not exist.
  void setData(double value) {
    if (column < 1 || column > cells_.size() || row < 1 || row > rows_) {
      throw StatementFailed("No such cell of the chart", kSubscriptOutOfRange);
    }
    cells_[column - 1][row - 1] = value;
    tell();
  }

  // The values of one column, from 0.
  const std::vector<double>& values(std::size_t index) const { return cells_.at(index); }

  // Sets the observer of the cells; an empty function takes it away.
  void observe(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  static std::size_t checked(double count) {
    constexpr double kMost = 32767;
    const double whole = std::nearbyint(count);
    if (!(whole >= 0 && whole <= kMost)) {
      throw StatementFailed("Invalid number of cells", kInvalidProcedureCall);
    }
    return static_cast<std::size_t>(whole);
  }
  void tell() {
    if (changed_) changed_();
  }

  std::vector<std::vector<double>> cells_;
  std::size_t rows_ = 0;
  std::function<void()> changed_;
};

}  // namespace veltrin
