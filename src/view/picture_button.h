// SPDX-License-Identifier: GPL-3.0-or-later
// A picture that can be clicked.
#pragma once

#include <QPushButton>

namespace veltrin {

// Only the picture is to be seen, with a faint ground under the pointer, and a ring when
// it has the keyboard.
class PictureButton : public QPushButton {
 public:
  explicit PictureButton(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace veltrin
