// A light panel on which controls stand.
#pragma once

#include <QFrame>

namespace veltrin {

// Paints a ground with round corners and a thin edge.
class Panel : public QFrame {
 public:
  explicit Panel(QWidget* parent = nullptr) : QFrame(parent) {}

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace veltrin
