// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/link_button.h"

#include <QPainter>
#include <QStyleOptionButton>

namespace veltrin {
namespace {

constexpr int kMargin = 4;  // pixels around the text
constexpr double kCorner = 3;
constexpr double kRing = 2;
constexpr int kPressedDarker = 140;  // percent

}  // namespace

LinkButton::LinkButton(QWidget* parent) : QPushButton(parent) {
  setCursor(Qt::PointingHandCursor);
  setAttribute(Qt::WA_Hover);
  setAutoDefault(true);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const {
  const QSize text = fontMetrics().size(Qt::TextShowMnemonic, this->text());
  return text.grownBy({kMargin, kMargin, kMargin, kMargin});
}

// Underlined where it can be clicked; under the pointer the line goes.
void LinkButton::paintEvent(QPaintEvent*) {
  QStyleOptionButton option;
  initStyleOption(&option);
  QPainter painter(this);
  QFont letters = font();
  letters.setUnderline(isEnabled() && !(option.state & QStyle::State_MouseOver));
  painter.setFont(letters);
  const QColor link = palette().color(isEnabled() ? QPalette::Link : QPalette::ButtonText);
  painter.setPen(isDown() ? link.darker(kPressedDarker) : link);
  painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
  if (!hasFocus()) return;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Highlight), kRing));
  painter.drawRoundedRect(QRectF(rect()).adjusted(kRing / 2, kRing / 2, -kRing / 2, -kRing / 2),
                          kCorner, kCorner);
}

}  // namespace veltrin
