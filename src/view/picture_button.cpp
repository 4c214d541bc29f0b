// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/picture_button.h"

#include <QPainter>
#include <QStyleOptionButton>

namespace veltrin {
namespace {

constexpr int kMargin = 4;  // pixels around the picture
constexpr double kCorner = 5;
constexpr double kRing = 2;

}  // namespace

PictureButton::PictureButton(QWidget* parent) : QPushButton(parent) {
  setCursor(Qt::PointingHandCursor);
  setAttribute(Qt::WA_Hover);
  setAutoDefault(true);
}

QSize PictureButton::sizeHint() const {
  return iconSize().grownBy({kMargin, kMargin, kMargin, kMargin});
}

void PictureButton::paintEvent(QPaintEvent*) {
  QStyleOptionButton option;
  initStyleOption(&option);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF ground = QRectF(rect()).adjusted(kRing / 2, kRing / 2, -kRing / 2, -kRing / 2);
  if (option.state & (QStyle::State_MouseOver | QStyle::State_Sunken) && isEnabled()) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        palette().color(option.state & QStyle::State_Sunken ? QPalette::Mid : QPalette::Midlight));
    painter.drawRoundedRect(ground, kCorner, kCorner);
  }
  icon().paint(&painter,
               QRect(QPoint(), iconSize())
                   .translated(rect().center() - QRect(QPoint(), iconSize()).center()),
               Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), kRing));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(ground, kCorner, kCorner);
  }
}

}  // namespace veltrin
