// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include <QGuiApplication>

#include "platform/qt/screen_scale.h"

namespace veltrin {

ScreenScale::ScreenScale(const QScreen& screen)
    : corner_(screen.geometry().topLeft()),
      size_(screen.geometry().size()),
      scale_(screen.devicePixelRatio()) {}

ScreenScale ScreenScale::at(const ScreenRectangle& place, const QScreen& otherwise) {
  const ScreenPoint middle{place.left + (place.right - place.left) / 2,
                           place.top + (place.bottom - place.top) / 2};
  for (const QScreen* screen : QGuiApplication::screens()) {
    const ScreenScale scale(*screen);
    if (scale.holds(middle)) return scale;
  }
  return ScreenScale(otherwise);
}

ScreenPoint ScreenScale::toPixels(const QPoint& point) const {
  const QPointF inside = QPointF(point - corner_) * scale_;
  return {corner_.x() + qRound(inside.x()), corner_.y() + qRound(inside.y())};
}

ScreenRectangle ScreenScale::toPixels(const QRect& area) const {
  const ScreenPoint corner = toPixels(area.topLeft());
  return {corner.x, corner.y, corner.x + qRound(area.width() * scale_),
          corner.y + qRound(area.height() * scale_)};
}

QPoint ScreenScale::toQt(const ScreenPoint& point) const {
  const QPointF inside = QPointF(point.x - corner_.x(), point.y - corner_.y()) / scale_;
  return corner_ + inside.toPoint();
}

QRect ScreenScale::around(const ScreenRectangle& place) const {
  const auto before = [this](int pixels) { return static_cast<int>(std::floor(pixels / scale_)); };
  const auto behind = [this](int pixels) { return static_cast<int>(std::ceil(pixels / scale_)); };
  const QPoint corner(before(place.left - corner_.x()), before(place.top - corner_.y()));
  const QPoint end(behind(place.right - corner_.x()), behind(place.bottom - corner_.y()));
  return {corner_ + corner, QSize(end.x() - corner.x(), end.y() - corner.y())};
}

bool ScreenScale::holds(const ScreenPoint& point) const {
  const double x = (point.x - corner_.x()) / scale_;
  const double y = (point.y - corner_.y()) / scale_;
  return x >= 0 && y >= 0 && x < size_.width() && y < size_.height();
}

}  // namespace veltrin
