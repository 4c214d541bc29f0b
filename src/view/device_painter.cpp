// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/device_painter.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <variant>

#include <QFontMetricsF>

#include "platform/qt/qt_text.h"

namespace veltrin {
namespace {

constexpr double kDegree = 16;  // in the toolkit's units of angles
constexpr double kWholeTurn = 360;

// Pixels by which a spoke goes beyond its end, so that spokes whose ends were cut still reach
// under the border, and none reaches over it.
constexpr double kSpokeReach = 0.9;

// The middle of a pixel of the surface.
QPointF middleOf(double x, double y) { return {x + 0.5, y + 0.5}; }

// Degrees against the clock from the right.
double directionOf(const QPointF& from, const QPointF& to) {
  return std::atan2(from.y() - to.y(), to.x() - from.x()) * 180 / std::numbers::pi;
}

QPointF beyond(const QPointF& from, const QPointF& to) {
  const QPointF way = to - from;
  const double length = std::hypot(way.x(), way.y());
  return length > 0 ? to + way * (kSpokeReach / length) : to;
}

}  // namespace

QColor toQt(const Colour& colour) { return {colour.red, colour.green, colour.blue}; }

QFont lettersOf(const DeviceFont& font, const QFont& around) {
  QFont letters = around;
  if (!font.family.empty()) letters.setFamily(toQt(font.family));
  if (font.size > 0) letters.setPointSizeF(font.size);
  if (font.isBold) letters.setBold(true);
  if (font.isItalic) letters.setItalic(true);
  return letters;
}

DevicePainter::DevicePainter(QPainter& painter, const QSizeF& surface, const QFont& around,
                             const PictureSource& pictures)
    : painter_(painter),
      surface_(surface),
      around_(around),
      pictures_(pictures),
      toScreen_(painter.deviceTransform()),
      scale_(toScreen_.m11()) {
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setBrush(Qt::NoBrush);
}

void DevicePainter::paint(const std::vector<DeviceOperation>& operations) {
  for (const DeviceOperation& operation : operations) std::visit(*this, operation);
}

void DevicePainter::use(const QColor& colour) {
  const bool isKey = key_ && colour == *key_;
  painter_.setCompositionMode(isKey ? QPainter::CompositionMode_DestinationOut
                                    : QPainter::CompositionMode_SourceOver);
}

// One pixel more, as the edge may lie within a pixel of the screen.
void DevicePainter::operator()(const Cls& cls) {
  const QColor ground = toQt(cls.ground);
  use(ground);
  painter_.fillRect(QRectF(QPointF(), surface_).adjusted(-1, -1, 1, 1), ground);
}

void DevicePainter::operator()(const SelectPen& pen) {
  penColour_ = toQt(pen.colour);
  penWidth_ = std::max(1.0, std::round(std::max(pen.width, 1) * scale_));
  painter_.setPen(QPen(penColour_, penWidth_ / scale_, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

void DevicePainter::operator()(const SelectBrush& brush) {
  painter_.setBrush(brush.colour ? QBrush(toQt(*brush.colour)) : QBrush(Qt::NoBrush));
}

void DevicePainter::operator()(const SelectFont& select) {
  painter_.setFont(lettersOf(select.font, around_));
}

void DevicePainter::operator()(const SetTextColor& text) { textColour_ = toQt(text.colour); }

QPointF DevicePainter::endAt(std::int32_t x, std::int32_t y) const {
  QPointF place = middleOf(x, y);
  if (centre_ && x != centre_->x()) place.rx() += 0.5;
  if (centre_ && y != centre_->y()) place.ry() += 0.5;
  return place;
}

void DevicePainter::operator()(const MoveToEx& move) { place_ = endAt(move.x, move.y); }

// Where the middle of a pen has to run for its edges to lie between pixels of the screen.
double DevicePainter::onGrid(double place, double offset) const {
  const double onScreen = place * scale_ + offset;
  const bool isOdd = std::fmod(penWidth_, 2) == 1;
  const double nearest = isOdd ? std::floor(onScreen) + 0.5 : std::round(onScreen);
  return (nearest - offset) / scale_;
}

void DevicePainter::operator()(const LineTo& line) {
  QPointF from = std::exchange(place_, endAt(line.x, line.y));
  QPointF to = place_;
  if (centre_ && from == middleOf(centre_->x(), centre_->y())) to = beyond(from, to);
  if (from.x() == to.x()) {
    from.setX(onGrid(from.x(), toScreen_.dx()));
    to.setX(from.x());
  }
  if (from.y() == to.y()) {
    from.setY(onGrid(from.y(), toScreen_.dy()));
    to.setY(from.y());
  }
  use(penColour_);
  painter_.drawLine(from, to);
}

// The middle of the outline, which belongs to the box.
QRectF DevicePainter::outlineOf(const DeviceBox& box) const {
  return {middleOf(box.left, box.top), middleOf(box.right - 1.0, box.bottom - 1.0)};
}

void DevicePainter::operator()(const Ellipse& ellipse) {
  use(penColour_);
  painter_.drawEllipse(outlineOf(ellipse.box));
}

void DevicePainter::operator()(const Rectangle& rectangle) {
  const QRectF outline = outlineOf(rectangle.box);
  const QPointF first(onGrid(outline.left(), toScreen_.dx()),
                      onGrid(outline.top(), toScreen_.dy()));
  const QPointF last(onGrid(outline.right(), toScreen_.dx()),
                     onGrid(outline.bottom(), toScreen_.dy()));
  use(penColour_);
  painter_.drawRect(QRectF(first, last));
}

void DevicePainter::operator()(const Arc& arc) {
  const QRectF outline = outlineOf(arc.box);
  const double from = directionOf(outline.center(), endAt(arc.start.x, arc.start.y));
  const double to = directionOf(outline.center(), endAt(arc.end.x, arc.end.y));
  double span = to - from;
  if (span <= 0) span += kWholeTurn;
  use(penColour_);
  painter_.drawArc(outline, static_cast<int>(std::lround(from * kDegree)),
                   static_cast<int>(std::lround(span * kDegree)));
}

void DevicePainter::operator()(const TextOutA& text) {
  const QPen pen = painter_.pen();
  use(textColour_);
  painter_.setPen(textColour_);
  const double ascent = QFontMetricsF(painter_.font()).ascent();
  painter_.drawText(QPointF(text.x, text.y + ascent), toQt(text.text));
  painter_.setPen(pen);
}

void DevicePainter::operator()(const SetStretchBltMode& stretch) {
  painter_.setRenderHint(QPainter::SmoothPixmapTransform, stretch.mode == kStretchHalftone);
}

// A picture that the installation lacks leaves the ground as it is.
void DevicePainter::operator()(const StretchBlt& blit) {
  const QRectF target(QPointF(blit.box.left, blit.box.top),
                      QPointF(blit.box.right, blit.box.bottom));
  const DevicePicture& picture = blit.picture;
  painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
  if (picture.drawing != nullptr) {
    painter_.save();
    painter_.translate(target.topLeft());
    painter_.scale(target.width() / std::max(picture.width, 1),
                   target.height() / std::max(picture.height, 1));
    const QSizeF size(picture.width, picture.height);
    DevicePainter(painter_, size, around_, pictures_).paint(picture.drawing->operations);
    painter_.restore();
    return;
  }
  const QIcon icon = pictures_ ? pictures_(picture.name) : QIcon();
  if (icon.isNull()) return;
  const QPixmap pixels = icon.pixmap(QSize(picture.width, picture.height), scale_);
  painter_.drawPixmap(target, pixels, QRectF(pixels.rect()));
}

}  // namespace veltrin
