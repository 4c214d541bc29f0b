// SPDX-License-Identifier: GPL-3.0-or-later
// Shows a picture.
#pragma once

#include <QIcon>
#include <QLabel>
#include <QSize>

namespace veltrin {

// Takes the picture that fits the scale of the screen, also when the window moves to
// another one. Its size is the widget's minimum size.
class PictureView : public QLabel {
 public:
  explicit PictureView(QWidget* parent = nullptr) : QLabel(parent) {}

  void setPicture(const QIcon& picture);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void choose();

  QIcon picture_;
  qreal scale_ = 0;  // for which the shown pixels were chosen
};

}  // namespace veltrin
