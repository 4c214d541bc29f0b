// SPDX-License-Identifier: GPL-3.0-or-later
// The scale around dial gauges that stand at one place.
#pragma once

#include <QWidget>

namespace veltrin {

class GaugeView;

// Lies over the dials that stand beside it in their place, and lets the mouse through. Paints
// ticks and numbers around the one that is seen, and below it the unit of the numbers, which
// its form names in a property.
class DialScale : public QWidget {
 public:
  explicit DialScale(QWidget* parent = nullptr);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* dial, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  const GaugeView* seenDial() const;
};

}  // namespace veltrin
