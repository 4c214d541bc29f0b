// SPDX-License-Identifier: GPL-3.0-or-later
// Shows a picture that the program draws.
#pragma once

#include <optional>

#include <QColor>
#include <QElapsedTimer>
#include <QPolygonF>
#include <QString>
#include <QTimer>
#include <QWidget>

#include "forms/picture_box.h"

namespace veltrin {

// The property of a picture that tells, as a size, into how many equal parts faint rules
// divide its ground across and down.
inline constexpr const char* kPartsProperty = "parts";

// Paints the lines of a picture, whose user scale is the whole of the widget, in the
// pixels of the screen itself. However often the program draws, a picture is painted once
// a frame at most. With each painting a screen reader is told the picture's last value,
// which is what the last line ends at above the lower edge, behind the picture's name.
class DrawingView : public QWidget {
 public:
  explicit DrawingView(QWidget* parent = nullptr);

  // The picture to show, or none. It has to live until it is taken away again.
  void setPicture(const PictureBox* picture);

  // To be called with every change of the picture.
  void noteChange() {
    if (!isStale_) makeStale();
  }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void makeStale();
  QColor ground() const;
  void drawRules(QPainter& painter) const;
  void drawLines(QPainter& painter);
  void tellLastValue();

  const PictureBox* picture_ = nullptr;
  QString meaning_;  // the name without the value
  std::optional<double> told_;
  bool isStale_ = false;  // changed since it was painted
  QTimer pause_;          // to the next frame
  QElapsedTimer sincePainted_;
  QPolygonF curve_;  // memory of the line under way
};

}  // namespace veltrin
