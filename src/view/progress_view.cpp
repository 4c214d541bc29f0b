// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/progress_view.h"

#include <algorithm>
#include <cmath>

#include <QPalette>

namespace veltrin {

ProgressView::ProgressView(QWidget* parent) : QProgressBar(parent) {
  setRange(0, kSteps);
  setValue(0);
  setTextVisible(false);
}

void ProgressView::showProgress(double minimum, double maximum, double value) {
  const double part = maximum > minimum ? (value - minimum) / (maximum - minimum) : 0;
  const double shown = part > 0 ? std::min(part, 1.0) : 0;
  setValue(static_cast<int>(std::lround(shown * kSteps)));
}

void ProgressView::showColour(const QColor& colour) {
  QPalette own;
  own.setColor(QPalette::Highlight, colour);
  setPalette(own);
}

}  // namespace veltrin
