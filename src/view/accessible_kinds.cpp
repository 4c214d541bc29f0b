// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/accessible_kinds.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "view/animation_view.h"
#include "view/chart_view.h"
#include "view/drawing_view.h"
#include "view/gauge_view.h"

namespace veltrin {
namespace {

// Nobody but the program turns a dial.
class AccessibleDial : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit AccessibleDial(GaugeView& dial)
      : QAccessibleWidget(&dial, QAccessible::Dial), dial_(dial) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  QVariant currentValue() const override { return part(&bkCProg::Value); }
  QVariant minimumValue() const override { return part(&bkCProg::Min); }
  QVariant maximumValue() const override { return part(&bkCProg::Max); }
  QVariant minimumStepSize() const override { return 1; }
  void setCurrentValue(const QVariant&) override {}

 private:
  template <class Part>
  QVariant part(Part which) const {
    if (!isValid() || dial_.gauge() == nullptr) return 0;
    return static_cast<int>(dial_.gauge()->*which);
  }

  GaugeView& dial_;
};

// Asked once for each class that an object is of; the first answer counts.
QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
  if (auto* dial = dynamic_cast<GaugeView*>(object)) return new AccessibleDial(*dial);
  auto* widget = qobject_cast<QWidget*>(object);
  if (dynamic_cast<DrawingView*>(widget) != nullptr ||
      dynamic_cast<ChartView*>(widget) != nullptr) {
    return new QAccessibleWidget(widget, QAccessible::Chart);
  }
  if (dynamic_cast<AnimationView*>(widget) != nullptr) {
    return new QAccessibleWidget(widget, QAccessible::Animation);
  }
  return nullptr;
}

}  // namespace

void tellKindsOfWidgets() { QAccessible::installFactory(makeAccessible); }

}  // namespace veltrin
