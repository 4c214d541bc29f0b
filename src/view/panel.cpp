// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/panel.h"

#include <QPainter>

namespace veltrin {
namespace {

constexpr double kCorner = 5;  // radius in pixels
constexpr double kLine = 1;

}  // namespace

void Panel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Mid), kLine));
  painter.setBrush(palette().color(backgroundRole()));
  painter.drawRoundedRect(QRectF(rect()).adjusted(kLine / 2, kLine / 2, -kLine / 2, -kLine / 2),
                          kCorner, kCorner);
}

}  // namespace veltrin
