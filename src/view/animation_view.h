// SPDX-License-Identifier: GPL-3.0-or-later
// Shows a clip in a loop.
#pragma once

#include <vector>

#include <QImage>
#include <QTimer>
#include <QWidget>

#include "platform/portable/avi_clip.h"

namespace veltrin {

// Keeps its place in the window while it is hidden, so that nothing jumps when it
// comes and goes. The clip is fitted into the place with its sides in proportion.
class AnimationView : public QWidget {
 public:
  explicit AnimationView(QWidget* parent = nullptr);

  // Takes another clip and shows its first frame.
  void open(const AviClip& clip);

  // Shows nothing.
  void clear();

  // Plays from the first frame on, or stands still.
  void setPlaying(bool playing);

  // The frame that is shown, from 0.
  std::size_t frame() const { return frame_; }
  std::size_t frameCount() const { return frames_.size(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void runOrRest();
  void advance();

  std::vector<QImage> pictures_;
  std::vector<std::size_t> frames_;
  std::size_t frame_ = 0;
  bool playing_ = false;
  QTimer clock_;
};

}  // namespace veltrin
