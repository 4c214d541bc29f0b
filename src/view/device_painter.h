// SPDX-License-Identifier: GPL-3.0-or-later
// Paints what was drawn by the operations of a device context.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QPainter>
#include <QPoint>
#include <QRectF>
#include <QTransform>

#include "controls/device_context.h"

namespace veltrin {

// A picture of the installation by its name.
using PictureSource = std::function<QIcon(const std::string& name)>;

QColor toQt(const Colour& colour);

// The letters that are meant, where `around` are those of the window.
QFont lettersOf(const DeviceFont& font, const QFont& around);

// Paints smoothly in the pixels of the screen itself, whatever its scale: lines are a whole
// number of them wide, and those that run along an edge, and boxes, begin and end with one.
class DevicePainter {
 public:
  // `surface` is the size of what the operations drew on, `around` the letters of the window.
  DevicePainter(QPainter& painter, const QSizeF& surface, const QFont& around,
                const PictureSource& pictures);

  // A colour that leaves no trace and takes away what it is drawn on: of a mask.
  void setKey(const QColor& key) { key_ = key; }

  // The centre of a dial: the ends of lines around it were cut towards zero and are meant
  // to lie half a pixel further, but for those on its axes. Lines from it are spokes.
  void setCentre(const QPoint& centre) { centre_ = centre; }

  void paint(const std::vector<DeviceOperation>& operations);

  // One operation each.
  void operator()(const Cls& cls);
  void operator()(const SelectPen& pen);
  void operator()(const SelectBrush& brush);
  void operator()(const SelectFont& select);
  void operator()(const SetTextColor& text);
  void operator()(const MoveToEx& move);
  void operator()(const LineTo& line);
  void operator()(const Ellipse& ellipse);
  void operator()(const Rectangle& rectangle);
  void operator()(const Arc& arc);
  void operator()(const TextOutA& text);
  void operator()(const SetStretchBltMode& stretch);
  void operator()(const StretchBlt& blit);

 private:
  void use(const QColor& colour);
  QPointF endAt(std::int32_t x, std::int32_t y) const;
  QRectF outlineOf(const DeviceBox& box) const;
  double onGrid(double place, double offset) const;

  QPainter& painter_;
  QSizeF surface_;
  QFont around_;
  const PictureSource& pictures_;
  std::optional<QColor> key_;
  std::optional<QPoint> centre_;
  QTransform toScreen_;
  double scale_;         // pixels of the screen to one of the surface
  double penWidth_ = 1;  // in pixels of the screen
  QPointF place_;        // where the next line begins
  QColor penColour_ = Qt::black;
  QColor textColour_ = Qt::black;
};

}  // namespace veltrin
