// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/gauge_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QAccessible>
#include <QEvent>
#include <QPainter>
#include <QRegion>
#include <QResizeEvent>

#include "platform/qt/qt_text.h"

namespace veltrin {
namespace {

constexpr int kFrame = 17;  // ms; 60 frames in a second
constexpr int kEdge = 1;    // pixels of a sunken edge

void takeColourAway(QRgb colour, QImage& image) {
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    std::replace(line, line + image.width(), colour, QRgb{0});
  }
}

}  // namespace

GaugeView::GaugeView(QWidget* parent) : QWidget(parent) {
  for (QTimer* timer : {&pause_, &telling_}) {
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
  }
  pause_.callOnTimeout(this, [this] { update(); });
  telling_.callOnTimeout(this, [this] { tellValue(); });
}

GaugeView::~GaugeView() { setGauge(nullptr); }

void GaugeView::setGauge(bkCProg* gauge, PictureSource pictures) {
  if (gauge_ != nullptr) std::exchange(gauge_, nullptr)->showOn(nullptr);
  if (told_) setAccessibleName(meaning_);
  meaning_ = accessibleName();
  told_.reset();
  pictures_ = std::move(pictures);
  gauge_ = gauge;
  if (gauge_ != nullptr) {
    gauge_->showOn(this);
    giveRoom();
    tellValue();
  }
  update();
}

TextExtent GaugeView::measure(const std::string& text, const DeviceFont& font) const {
  const QFontMetricsF metrics(lettersOf(font, this->font()));
  return {static_cast<std::int32_t>(std::lround(metrics.horizontalAdvance(toQt(text)))),
          static_cast<std::int32_t>(std::lround(metrics.height()))};
}

std::uintptr_t GaugeView::hWnd() const { return effectiveWinId(); }

int GaugeView::restOfFrame() const {
  const qint64 rest = sincePainted_.isValid() ? kFrame - sincePainted_.elapsed() : 0;
  return static_cast<int>(std::max<qint64>(rest, 0));
}

// A gauge that is out of sight stays stale until it comes into sight, which paints it.
void GaugeView::noteDrawing() {
  const int before = std::exchange(edge_, gauge_->Inset ? kEdge : 0);
  if (edge_ != before) giveRoom();
  if (isStale_) return;
  isStale_ = true;
  const int rest = restOfFrame();
  if (rest > 0) {
    pause_.start(rest);
  } else {
    update();
  }
}

// A gauge that is to be painted tells its value then.
void GaugeView::noteValue() {
  if (!isStale_ && !telling_.isActive()) telling_.start(restOfFrame());
}

void GaugeView::noteSize() {
  const int edges = 2 * edge_;
  setFixedSize(gauge_->width() + edges, gauge_->height() + edges);
}

void GaugeView::noteEnd() {
  gauge_ = nullptr;
  update();
}

// The gauge has the room within its edge.
void GaugeView::giveRoom() { gauge_->resize(width() - 2 * edge_, height() - 2 * edge_); }

void GaugeView::resizeEvent(QResizeEvent*) {
  if (gauge_ != nullptr) giveRoom();
}

void GaugeView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange && gauge_ != nullptr) gauge_->Repaint();
}

void GaugeView::tellValue() {
  if (gauge_ == nullptr || told_ == gauge_->Value) return;
  told_ = gauge_->Value;
  setAccessibleName((meaning_ + ' ' + QString::number(*told_)).trimmed());
  QAccessibleValueChangeEvent change(this, *told_);
  QAccessible::updateAccessibility(&change);
}

void GaugeView::paintEvent(QPaintEvent*) {
  isStale_ = false;
  pause_.stop();
  telling_.stop();
  sincePainted_.start();
  if (gauge_ == nullptr) return;
  QPainter painter(this);
  painter.translate(edge_, edge_);
  if (gauge_->isShaped()) {
    const QImage face = shapedFace();
    painter.drawImage(QPointF(), face);
    takeShape(face);
  } else {
    paintFace(painter);
    if (!mask().isEmpty()) clearMask();
  }
  painter.resetTransform();
  if (edge_ > 0) paintEdge(painter);
  tellValue();
}

// The light comes from above, on the left.
void GaugeView::paintEdge(QPainter& painter) const {
  const QColor shade = palette().color(QPalette::Dark);
  const QColor light = palette().color(QPalette::Light);
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.fillRect(0, height() - edge_, width(), edge_, light);
  painter.fillRect(width() - edge_, 0, edge_, height(), light);
  painter.fillRect(0, 0, width() - edge_, edge_, shade);
  painter.fillRect(0, 0, edge_, height() - edge_, shade);
}

DevicePainter GaugeView::deviceOn(QPainter& painter) const {
  const QSizeF surface(gauge_->width(), gauge_->height());
  DevicePainter device(painter, surface, font(), pictures_);
  device.setCentre({gauge_->XCenter, gauge_->YCenter});
  return device;
}

void GaugeView::paintFace(QPainter& painter) const {
  deviceOn(painter).paint(gauge_->operations());
}

QImage GaugeView::transparent() const {
  QImage image(size() * devicePixelRatioF(), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(devicePixelRatioF());
  image.fill(Qt::transparent);
  return image;
}

// What was drawn, but for what has the mask's colour: the ground mostly, so that the edges
// to the window are smooth.
void GaugeView::paintKeyed(QImage& image, const DeviceDrawing& drawing) const {
  QPainter painter(&image);
  DevicePainter device = deviceOn(painter);
  device.setKey(toQt(translated(gauge_->MaskColor)));
  device.paint(drawing.operations);
}

void GaugeView::paintMask(QImage& image) const {
  const DevicePicture& picture = gauge_->MaskPicture;
  if (picture.drawing != nullptr) return paintKeyed(image, *picture.drawing);
  QPainter painter(&image);
  const DeviceBox whole{0, 0, gauge_->width(), gauge_->height()};
  deviceOn(painter).paint({StretchBlt{whole, picture, kCopyPixels}});
  painter.end();
  takeColourAway(toQt(translated(gauge_->MaskColor)).rgb(), image);
}

QImage GaugeView::shapedFace() const {
  QImage mask = transparent();
  paintMask(mask);
  if (gauge_->AutoMask) return mask;
  QImage face = transparent();
  QPainter painter(&face);
  paintFace(painter);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  painter.drawImage(QPointF(), mask);
  painter.end();
  return face;
}

// The pixels of the window that the face has a part of.
void GaugeView::takeShape(const QImage& face) {
  const double scale = face.devicePixelRatio();
  QRegion shape;
  for (int y = 0; y < face.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(face.constScanLine(y));
    for (int x = 0; x < face.width(); ++x) {
      if (qAlpha(line[x]) == 0) continue;
      const int first = x;
      while (x < face.width() && qAlpha(line[x]) != 0) ++x;
      const int left = static_cast<int>(first / scale);
      const int right = static_cast<int>(std::ceil(x / scale));
      shape += QRect(left, static_cast<int>(y / scale), right - left, 1);
    }
  }
  shape.translate(edge_, edge_);
  if (shape != mask()) setMask(shape);
}

}  // namespace veltrin
