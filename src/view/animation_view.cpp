// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/animation_view.h"

#include <QPainter>

namespace veltrin {
namespace {

QImage toImage(const AviClip& clip, const std::vector<std::uint8_t>& picture) {
  return QImage(picture.data(), clip.width, clip.height, static_cast<qsizetype>(clip.width) * 3,
                QImage::Format_RGB888)
      .convertToFormat(QImage::Format_RGB32);
}

}  // namespace

AnimationView::AnimationView(QWidget* parent) : QWidget(parent) {
  QSizePolicy policy = sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  setSizePolicy(policy);
  clock_.setTimerType(Qt::PreciseTimer);
  connect(&clock_, &QTimer::timeout, this, [this] { advance(); });
}

void AnimationView::open(const AviClip& clip) {
  clear();
  for (const auto& picture : clip.pictures) pictures_.push_back(toImage(clip, picture));
  frames_ = clip.frames;
  clock_.setInterval(std::chrono::duration_cast<std::chrono::milliseconds>(clip.frameTime));
  runOrRest();
}

void AnimationView::clear() {
  clock_.stop();
  pictures_.clear();
  frames_.clear();
  frame_ = 0;
  update();
}

void AnimationView::setPlaying(bool playing) {
  if (playing && !playing_) frame_ = 0;
  playing_ = playing;
  runOrRest();
  update();
}

void AnimationView::runOrRest() {
  if (playing_ && isVisible() && frames_.size() > 1) {
    clock_.start();
  } else {
    clock_.stop();
  }
}

void AnimationView::advance() {
  frame_ = (frame_ + 1) % frames_.size();
  update();
}

void AnimationView::paintEvent(QPaintEvent*) {
  if (frames_.empty()) return;
  const QImage& picture = pictures_[frames_[frame_]];
  QRectF place(QPointF(), QSizeF(picture.size()).scaled(size(), Qt::KeepAspectRatio));
  place.moveCenter(QRectF(rect()).center());
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(place, picture);
}

void AnimationView::showEvent(QShowEvent*) { runOrRest(); }

void AnimationView::hideEvent(QHideEvent*) { runOrRest(); }

}  // namespace veltrin
