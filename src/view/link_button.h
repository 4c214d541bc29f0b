// SPDX-License-Identifier: GPL-3.0-or-later
// A text that opens something when it is clicked.
#pragma once

#include <QPushButton>

namespace veltrin {

// Looks like a link in a text, and is pressed with mouse and keyboard as a button is.
class LinkButton : public QPushButton {
 public:
  explicit LinkButton(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace veltrin
