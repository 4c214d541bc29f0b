// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <utility>
#include <vector>

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWidget>

#include "platform/qt/later.h"
#include "platform/qt/screen.h"
#include "platform/qt/screen_scale.h"

namespace veltrin {
namespace {

// A window of no more than some lines, which lets the mouse through. Its shape is cut
// out, as what is only transparent is black on a screen without a compositor. The window
// manager does not know it, so that it stands exactly where it is put.
class Lines : public QWidget {
 public:
  Lines()
      : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint |
                             Qt::WindowStaysOnTopHint | Qt::WindowTransparentForInput |
                             Qt::WindowDoesNotAcceptFocus) {
    setObjectName("borders");
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_X11NetWmWindowTypeDND);  // a compositor fades such a one neither in nor out
  }

  // Shows the lines, a part of the screen that is not empty.
  void put(const QRegion& lines) {
    const QRect bounds = lines.boundingRect();
    setGeometry(bounds);
    setMask(lines.translated(-bounds.topLeft()));
    show();
    raise();
  }

 protected:
  // Light and dark in turn, to be seen on any ground.
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.fillRect(rect(), QBrush(Qt::black, Qt::Dense4Pattern));
  }
};

// Keeps which borders were drawn an odd number of times. A program does not paint on the
// windows of others here: they are shown by a window of lines before all of them.
class LinuxBorderPen : public BorderPen {
 public:
  // The drawings of one routine show up together behind it.
  void draw(const ScreenRectangle& border) override {
    const auto found = std::find(borders_.begin(), borders_.end(), border);
    if (found == borders_.end()) {
      borders_.push_back(border);
    } else {
      borders_.erase(found);
    }
    if (std::exchange(due_, true)) return;
    later_.call([this] { show(); });
  }

 private:
  void show() {
    due_ = false;
    QRegion lines;
    for (const ScreenRectangle& border : borders_) {
      const QRect area = ScreenScale::at(border, *QGuiApplication::primaryScreen()).around(border);
      lines += QRegion(area) - QRegion(area.adjusted(1, 1, -1, -1));
    }
    if (lines.isEmpty()) {
      window_.reset();
      return;
    }
    if (window_ == nullptr) window_ = std::make_unique<Lines>();
    window_->put(lines);
  }

  std::vector<ScreenRectangle> borders_;
  bool due_ = false;
  std::unique_ptr<Lines> window_;
  Later later_;  // goes first
};

// Where programs do not place their windows there is nothing to draw.
class NoBorderPen : public BorderPen {
 public:
  void draw(const ScreenRectangle&) override {}
};

}  // namespace

std::unique_ptr<BorderPen> makeBorderPen() {
  if (isPlacedBySystem()) return std::make_unique<NoBorderPen>();
  return std::make_unique<LinuxBorderPen>();
}

}  // namespace veltrin
