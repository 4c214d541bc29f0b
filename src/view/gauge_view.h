// SPDX-License-Identifier: GPL-3.0-or-later
// Shows a dial gauge.
#pragma once

#include <optional>

#include <QElapsedTimer>
#include <QImage>
#include <QTimer>
#include <QWidget>

#include "controls/bkCProg.h"
#include "view/device_painter.h"

namespace veltrin {

// Gives the gauge its own size and letters, and paints what it has drawn, once a frame at
// most, and only when it looks different. A gauge with a mask takes its shape: beside it
// the window is seen, and gets the clicks. A screen reader is told the value behind the
// gauge's name.
class GaugeView : public QWidget, private GaugeScreen {
 public:
  explicit GaugeView(QWidget* parent = nullptr);
  ~GaugeView() override;
  GaugeView(const GaugeView&) = delete;
  GaugeView& operator=(const GaugeView&) = delete;

  // The gauge to show, or none, and where its pictures come from.
  void setGauge(bkCProg* gauge, PictureSource pictures = {});
  const bkCProg* gauge() const { return gauge_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  TextExtent measure(const std::string& text, const DeviceFont& font) const override;
  std::uintptr_t hWnd() const override;
  void noteDrawing() override;
  void noteValue() override;
  void noteSize() override;
  void noteEnd() override;

  int restOfFrame() const;
  void tellValue();
  void giveRoom();
  DevicePainter deviceOn(QPainter& painter) const;
  void paintEdge(QPainter& painter) const;
  void paintFace(QPainter& painter) const;
  QImage transparent() const;
  void paintKeyed(QImage& image, const DeviceDrawing& drawing) const;
  void paintMask(QImage& image) const;
  QImage shapedFace() const;
  void takeShape(const QImage& face);

  bkCProg* gauge_ = nullptr;
  PictureSource pictures_;
  QString meaning_;  // the name without the value
  std::optional<std::int32_t> told_;
  int edge_ = 0;          // pixels of a sunken edge
  bool isStale_ = false;  // changed since it was painted
  QTimer pause_;          // to the next frame
  QTimer telling_;        // of a value that looks like the one before
  QElapsedTimer sincePainted_;
};

}  // namespace veltrin
