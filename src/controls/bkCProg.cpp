// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/bkCProg.h"

#include <algorithm>
#include <memory>

#include "text/numbers.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::int32_t kWholeTurn = 360;  // degrees
constexpr std::int32_t kLeastSpan = 45;

// The extent of a text that nobody shows: letters of one width.
constexpr std::int32_t kLetterWidth = 6;
constexpr std::int32_t kLetterHeight = 13;

}  // namespace

AnyGaugeProperty::AnyGaugeProperty(bkCProg& gauge, const char* name, PropertyEffect effect)
    : gauge_(gauge), name_(name), effect_(effect) {
  gauge.properties_.push_back(this);
}

void AnyGaugeProperty::noteWrite() { gauge_.noteWrite(*this); }

bkCProg::bkCProg() {
  RecheckColors();
  paint();
}

bkCProg::~bkCProg() {
  if (screen_ != nullptr) screen_->noteEnd();
}

std::int32_t bkCProg::withinScale(const bkCProg& gauge, std::int32_t value) {
  if (value < gauge.Min) return gauge.Min;
  return value > gauge.Max ? gauge.Max.get() : value;
}

std::int32_t bkCProg::withinTurn(const bkCProg&, std::int32_t angle) {
  const std::int32_t rest = angle % kWholeTurn;
  return rest < 0 ? rest + kWholeTurn : rest;
}

std::int32_t bkCProg::wideEnough(const bkCProg&, std::int32_t span) {
  const std::int32_t rest = span > kWholeTurn ? (span - 1) % kWholeTurn + 1 : span;
  return std::max(rest, kLeastSpan);
}

void bkCProg::noteWrite(const AnyGaugeProperty& property) {
  if (property.effect() == PropertyEffect::RecheckAndPaint) RecheckColors();
  if (property.effect() == PropertyEffect::FitAndPaint && AutoSize) fit();
  const bool isDrawn = paint();
  if (screen_ != nullptr) {
    if (isDrawn || property.effect() == PropertyEffect::Look) screen_->noteDrawing();
    if (&property == &Value) screen_->noteValue();
  }
  if (propertyChanged) propertyChanged(property.name());
}

void bkCProg::Repaint() {
  if (paint() && screen_ != nullptr) screen_->noteDrawing();
}

void bkCProg::RecheckColors() {
  StartRGB = translated(StartColor);
  MidRGB = translated(MidColor);
  EndRGB = translated(EndColor);
}

void bkCProg::resize(std::int32_t width, std::int32_t height) {
  width_ = std::max(width, 0);
  height_ = std::max(height, 0);
  if (AutoSize) fit();
  Repaint();
}

// The dial takes the largest circle that leaves its border, and ticks that reach outside,
// within the control. A control too small for them has a dial of no radius.
void bkCProg::fit() {
  YCenter.value_ = height_ / 2;
  XCenter.value_ = width_ / 2;
  std::int32_t radius = std::min(XCenter.get(), YCenter.get());
  if (ShowBorder) radius = toLong(radius - (BorderWidth / 2.0 + 0.5));
  if (TickStyle != kNoTicks) {
    if (TickPosition == kTicksOutside) radius -= TickSize;
    if (TickPosition == kTicksAcross) radius = toLong(radius - TickSize / 2.0);
  }
  Radius.value_ = std::max(radius, 0);
}

// The screen's unit is the pixel here, so the size of the picture is that of the control.
void bkCProg::AutoSizeToPicture() {
  const DevicePicture& picture = Picture;
  if (!picture.isSet()) return;
  resize(picture.width, picture.height);
  if (screen_ != nullptr) screen_->noteSize();
}

void bkCProg::ReadProperties(const PropertyBag& bag, double scale) {
  for (AnyGaugeProperty* property : properties_) property->read(bag, scale);
  RecheckColors();
  paint();
  if (screen_ == nullptr) return;
  screen_->noteDrawing();
  screen_->noteValue();
}

// A mask that was drawn is none to be kept: each drawing makes it anew.
void bkCProg::WriteProperties(PropertyBag& bag, double scale) const {
  for (const AnyGaugeProperty* property : properties_) {
    if (property == &MaskPicture && MaskPicture.get().drawing != nullptr) continue;
    property->write(bag, scale);
  }
}

DevicePicture bkCProg::Image() const {
  auto drawing = std::make_shared<DeviceDrawing>(DeviceDrawing{width_, height_, shown_});
  return {{}, std::move(drawing), width_, height_};
}

// The letters of the screen may have another extent.
void bkCProg::showOn(GaugeScreen* screen) {
  screen_ = screen;
  paint();
  if (screen_ != nullptr) screen_->noteDrawing();
}

TextExtent bkCProg::measure(const std::string& text) const {
  if (screen_ != nullptr) return screen_->measure(text, Font);
  return {static_cast<std::int32_t>(Len(text)) * kLetterWidth, kLetterHeight};
}

}  // namespace veltrin
