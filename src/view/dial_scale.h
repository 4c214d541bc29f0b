// The scale around dial gauges that stand at one place.
#pragma once

#include <QWidget>

namespace veltrin {

class GaugeView;

// Paints ticks and numbers around the dial that is seen of those that stand on its ground,
// and the unit of its numbers, which its form names in a property, below.
class DialScale : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* dial, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  const GaugeView* seenDial() const;
};

}  // namespace veltrin
