// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/picture_view.h"

#include <QEvent>

namespace veltrin {

void PictureView::setPicture(const QIcon& picture) {
  picture_ = picture;
  choose();
}

void PictureView::choose() {
  scale_ = devicePixelRatioF();
  const QIcon::Mode mode = isEnabled() ? QIcon::Normal : QIcon::Disabled;
  setPixmap(picture_.pixmap(minimumSize(), scale_, mode));
}

void PictureView::paintEvent(QPaintEvent* event) {
  if (scale_ != devicePixelRatioF()) choose();
  QLabel::paintEvent(event);
}

void PictureView::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::EnabledChange) choose();
}

}  // namespace veltrin
