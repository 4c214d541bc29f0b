// SPDX-License-Identifier: GPL-3.0-or-later
// The panel on which the rows of a table stand.
#pragma once

#include <QFrame>

namespace veltrin {

// Paints a light panel with round corners, a line below the first row of its grid
// layout, which holds the captions in a fainter ink, and a tint behind every other row.
class TablePanel : public QFrame {
 public:
  explicit TablePanel(QWidget* parent = nullptr) : QFrame(parent) {}

 protected:
  void showEvent(QShowEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace veltrin
