// SPDX-License-Identifier: GPL-3.0-or-later
// The bar of a progress, in the colour that its program gives it.
#pragma once

#include <QColor>
#include <QProgressBar>

namespace veltrin {

// Shows how far a value has come between two others, which may be of any size: the bar
// itself counts from 0 to kSteps. A screen reader is told these.
class ProgressView : public QProgressBar {
 public:
  static constexpr int kSteps = 10000;  // finer than the pixels of any screen

  explicit ProgressView(QWidget* parent = nullptr);

  // What lies outside of the ends is at one of them. A bar without a length is empty.
  void showProgress(double minimum, double maximum, double value);

  void showColour(const QColor& colour);
};

}  // namespace veltrin
