// SPDX-License-Identifier: GPL-3.0-or-later
// A light panel on which controls stand.
#pragma once

#include <QFrame>

namespace veltrin {

// Paints a ground with round corners and a thin edge. Labels on it know their ground by its
// background role.
class Panel : public QFrame {
 public:
  explicit Panel(QWidget* parent = nullptr) : QFrame(parent) {
    setBackgroundRole(QPalette::AlternateBase);
  }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace veltrin
