// SPDX-License-Identifier: GPL-3.0-or-later
// Between the coordinates of Qt, which a screen's scale shrinks, and pixels (Linux).
#pragma once

#include <QRect>
#include <QScreen>

#include "platform/desktop.h"

namespace veltrin {

// Qt keeps the corner of each screen where it is in pixels and scales what lies within:
// so there is one such relation for each screen. A window is at home on one of them, by
// which all of it is scaled.
class ScreenScale {
 public:
  explicit ScreenScale(const QScreen& screen);

  // That of the screen on which a place's middle lies, else of `otherwise`.
  static ScreenScale at(const ScreenRectangle& place, const QScreen& otherwise);

  ScreenPoint toPixels(const QPoint& point) const;
  ScreenRectangle toPixels(const QRect& area) const;

  // The nearest point.
  QPoint toQt(const ScreenPoint& point) const;

  // The smallest area that covers a place.
  QRect around(const ScreenRectangle& place) const;

 private:
  bool holds(const ScreenPoint& point) const;

  QPoint corner_;  // the same in both
  QSize size_;     // of Qt's
  double scale_;   // pixels to one of Qt's
};

}  // namespace veltrin
