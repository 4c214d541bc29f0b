// SPDX-License-Identifier: GPL-3.0-or-later
// How the dial gauge draws its face.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "controls/bkCProg.h"
#include "text/numbers.h"
#include "text/statement.h"

namespace veltrin {
namespace {

constexpr double kPi = 3.14159;  // dials stand where users have them by this short one
constexpr std::int32_t kWholeTurn = 360;
constexpr std::int32_t kNarrowRadius = 17;   // below it, spokes are one pixel wide
constexpr std::int32_t kRadiusOfWidth = 48;  // one more pixel of width for each so many

// Ticks closer than a degree fall on every degree, however close they are.
constexpr float kFinestStep = 1.0F / 64;

// A number cut to a whole one, towards zero; at most what 32 bits hold.
std::int32_t cut(double number) {
  constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
  constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp(std::trunc(number), kLowest, kHighest));
}

// Beyond 32 bits, where need be.
double sum(std::int32_t one, std::int32_t other) { return static_cast<double>(one) + other; }
double difference(std::int32_t from, std::int32_t less) { return static_cast<double>(from) - less; }

double quotient(double number, double divisor) {
  if (divisor == 0) throw StatementFailed("Division by zero", kDivisionByZero);
  return number / divisor;
}

// Where ticks in form of a line begin and end, and where the others stand, in sizes of a
// tick beyond the radius: by position.
struct TickPlace {
  double from;
  double to;
  double middle;
};
constexpr std::array<TickPlace, 3> kTickPlaces{{{0, -1, -0.5}, {0, 1, 0.5}, {-0.5, 0.5, 0}}};

bool hasPlace(std::int32_t position) { return position >= 0 && position < 3; }
bool isStyle(std::int32_t style) { return style >= kLineTicks && style <= kHollowSquares; }

}  // namespace

MoveToEx bkCProg::PointOnCircle(double distance, std::int32_t degrees) const {
  const std::int32_t start = Clockwise ? OffsetAngle.get() : kWholeTurn - OffsetAngle;
  const double turn = (start + degrees) % kWholeTurn * kPi / 180;
  const auto sine = static_cast<float>(std::sin(turn));
  const auto cosine = static_cast<float>(std::cos(turn));
  const double across = Clockwise ? distance * sine : -distance * sine;
  return {cut(across + XCenter), cut(-distance * cosine + YCenter)};
}

Colour bkCProg::ColorAt(float fraction) const {
  if (!Tricolor) return blend(fraction, EndRGB, StartRGB);
  if (fraction < 0.5F) return blend(fraction * 100 / 50, MidRGB, StartRGB);
  return blend((fraction * 100 - 50) / 50, EndRGB, MidRGB);
}

// Draws into the surface and takes it over; whether the gauge looks different now. The
// surface is always whole: a mask covers what is shown of it, not what is drawn.
bool bkCProg::paint() {
  surface_.Cls(translated(BackColor));
  drawPicture();
  const Face drawn = face();
  drawCircle(drawn);
  drawArc(drawn);
  drawBorder(drawn);
  drawTicks(drawn);
  drawNeedle(drawn);
  drawText();
  const bool isNew = surface_.operations() != shown_;
  if (isNew) surface_.swapOperations(shown_);
  takeMask();
  return isNew;
}

// Without a range there is no fraction, and the one before stays. A value that a later end
// of the scale has left outside stands at that end.
bkCProg::Face bkCProg::face() {
  const double range = difference(Max, Min);
  skip([&] { fraction_ = quotient(difference(Value, Min), range); });
  const double share = std::clamp(fraction_, 0.0, 1.0);
  Face face;
  face.share = static_cast<float>(share);
  face.degrees = share * Span;
  if (Radius >= kNarrowRadius) face.spoke = Radius / kRadiusOfWidth + 2;
  const std::int32_t half = (BorderWidth + 1) / 2;
  face.radius = ShowBorder ? Radius - half : Radius.get();
  return face;
}

// The picture behind the gauge, stretched to the control when it has another size.
void bkCProg::drawPicture() {
  const DevicePicture& picture = Picture;
  if (!picture.isSet()) return;
  const StretchBlt whole{{0, 0, width_, height_}, picture, kCopyPixels};
  if (picture.width == width_ && picture.height == height_) {
    surface_.draw(whole);
    return;
  }
  const std::int32_t before = surface_.GetStretchBltMode();
  surface_.SetStretchBltMode(kStretchHalftone);
  surface_.draw(whole);
  surface_.SetStretchBltMode(before);
}

DeviceBox bkCProg::dialBox() const {
  const double x = XCenter;
  const double y = YCenter;
  const double radius = Radius;
  return {cut(x - radius), cut(y - radius), cut(x + radius + 1), cut(y + radius + 1)};
}

void bkCProg::drawSpoke(const Face& face, std::int32_t degrees) {
  const MoveToEx end = PointOnCircle(face.radius, degrees);
  surface_.draw(MoveToEx{XCenter, YCenter});
  surface_.draw(LineTo{end.x, end.y});
}

// Behind a scale that is no whole turn, only what the arc does not cover.
void bkCProg::drawCircle(const Face& face) {
  const Colour colour = translated(CircleColor);
  if (!ShowCircle || colour == translated(BackColor)) return;
  if (Span == kWholeTurn) {
    surface_.SelectPen(colour, 1);
    surface_.SelectBrush(colour);
    surface_.draw(Ellipse{dialBox()});
    return;
  }
  surface_.SelectPen(colour, face.spoke);
  const double last = ShowArc ? face.degrees : 0;
  for (std::int32_t degrees = Span; degrees >= last; --degrees) drawSpoke(face, degrees);
}

void bkCProg::drawArc(const Face& face) {
  if (!ShowArc || (Value <= Min && !ShowZeroLine)) return;
  surface_.SelectPen(Fade ? ColorAt(face.share) : StartRGB, face.spoke);
  const std::int32_t last = toLong(face.degrees);
  for (std::int32_t degrees = 0; degrees <= last; ++degrees) {
    if (Gradient) {
      const float place = static_cast<float>(degrees) / static_cast<float>(Span);
      surface_.SelectPen(ColorAt(place), face.spoke);
    }
    drawSpoke(face, degrees);
  }
}

// The system's arcs run against the clock.
void bkCProg::drawBorder(const Face& face) {
  if (!ShowBorder) return;
  surface_.SelectPen(translated(BorderColor), BorderWidth);
  if (Span == kWholeTurn) {
    surface_.SelectBrush(std::nullopt);
    surface_.draw(Ellipse{dialBox()});
    return;
  }
  MoveToEx start = PointOnCircle(face.radius, Span);
  MoveToEx end = PointOnCircle(face.radius, 0);
  if (!Clockwise) std::swap(start, end);
  surface_.draw(Arc{dialBox(), start, end});
}

// On a whole turn the last tick would be the first again. Without a range there is no step,
// and without a step no tick.
void bkCProg::drawTicks(const Face& face) {
  if (!isStyle(TickStyle) || !hasPlace(TickPosition)) return;
  float step = 0;
  const double range = difference(Max, Min);
  skip([&] { step = static_cast<float>(quotient(TickFrequency, range) * Span); });
  if (!(step > 0)) return;
  step = std::max(step, kFinestStep);
  const Colour colour = translated(TickColor);
  const bool isFilled = TickStyle == kFilledDots || TickStyle == kFilledSquares;
  surface_.SelectPen(colour, TickWidth);
  surface_.SelectBrush(isFilled ? std::optional<Colour>(colour) : std::nullopt);
  const float end = Span == kWholeTurn ? kWholeTurn - 1 : static_cast<float>(Span);
  std::int32_t last = -1;
  float place = 0;
  while (place <= end) {
    const std::int32_t degrees = cut(place + 0.5);
    if (degrees != last) drawTick(face, degrees);
    last = degrees;
    place += step;
  }
}

void bkCProg::drawTick(const Face& face, std::int32_t degrees) {
  const TickPlace& place = kTickPlaces.at(static_cast<std::size_t>(TickPosition.get()));
  const double size = TickSize;
  if (TickStyle == kLineTicks) {
    const MoveToEx end = PointOnCircle(face.radius + place.to * size, degrees);
    surface_.draw(PointOnCircle(face.radius + place.from * size, degrees));
    surface_.draw(LineTo{end.x, end.y});
    return;
  }
  const MoveToEx middle = PointOnCircle(face.radius + place.middle * size, degrees);
  const double before = -size / 2 + 0.5;
  const double behind = size / 2 + 0.5;
  const DeviceBox box{cut(middle.x + before), cut(middle.y + before), cut(middle.x + behind),
                      cut(middle.y + behind)};
  if (TickStyle == kFilledDots || TickStyle == kHollowDots) {
    surface_.draw(Ellipse{box});
  } else {
    surface_.draw(Rectangle{box});
  }
}

void bkCProg::drawNeedle(const Face& face) {
  if (!ShowNeedle) return;
  const bool isOfScale = !ShowArc && (Fade || Gradient);
  surface_.SelectPen(isOfScale ? ColorAt(face.share) : translated(NeedleColor), face.spoke);
  drawSpoke(face, toLong(face.degrees));
}

// A percentage of no range is no text.
void bkCProg::drawText() {
  if (!ShowValue) return;
  std::string text;
  if (ShowValueAsPercent) {
    const double range = difference(Max, Min);
    skip([&] { text = Format(quotient(100 * difference(Value, Min), range), "0") + "%"; });
  } else {
    text = toText(Value);
  }
  if (text.empty()) return;
  const TextExtent extent = measure(text);
  const double x = std::nearbyint(sum(XCenter, TextOffsetX) - extent.width / 2.0);
  const double y = std::nearbyint(sum(YCenter, TextOffsetY) - extent.height / 2.0);
  surface_.draw(SelectFont{Font});
  if (TextShadow) {
    surface_.draw(SetTextColor{translated(TextShadowColor)});
    surface_.draw(TextOutA{cut(x + TextShadowXOffset), cut(y + TextShadowYOffset), text});
  }
  surface_.draw(SetTextColor{translated(TextColor)});
  surface_.draw(TextOutA{cut(x), cut(y), text});
}

// What has the ground's colour is not there. The mask is of this face, whatever it was before.
void bkCProg::takeMask() {
  if (!AutoMask) return;
  const auto& mask = MaskPicture.get().drawing;
  const bool isOfFace = mask != nullptr && mask->width == width_ && mask->height == height_ &&
                        mask->operations == shown_;
  if (!isOfFace) MaskPicture.value_ = Image();
  MaskColor.value_ = BackColor;
}

}  // namespace veltrin
