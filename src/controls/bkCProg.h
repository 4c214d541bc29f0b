// SPDX-License-Identifier: GPL-3.0-or-later
// A round gauge that shows a whole number on an arc.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/colour_code.h"
#include "controls/device_context.h"
#include "controls/gauge_property.h"
#include "controls/property_bag.h"
#include "forms/control.h"

namespace veltrin {

// Extent of a text, in pixels.
struct TextExtent {
  std::int32_t width = 0;
  std::int32_t height = 0;
};

// What a gauge asks of whoever shows it, and tells it.
class GaugeScreen {
 public:
  virtual ~GaugeScreen() = default;

  virtual TextExtent measure(const std::string& text, const DeviceFont& font) const = 0;

  // The system's handle of the window, 0 when there is none.
  virtual std::uintptr_t hWnd() const = 0;

  virtual void noteDrawing() = 0;  // the gauge looks different now
  virtual void noteValue() = 0;    // its value is another one
  virtual void noteSize() = 0;     // it has given itself another size
  virtual void noteEnd() = 0;      // it is there no longer
};

// Marks on the scale: how they look and where they stand to the radius. Other numbers are
// none.
enum TickStyles : std::int32_t {
  kNoTicks = 0,
  kLineTicks = 1,
  kFilledDots = 2,
  kHollowDots = 3,
  kFilledSquares = 4,
  kHollowSquares = 5,
};
enum TickPositions : std::int32_t { kTicksInside = 0, kTicksOutside = 1, kTicksAcross = 2 };

// The scale begins `OffsetAngle` degrees from the top and covers `Span` degrees, to the
// right when it runs clockwise. The value fills it with spokes from the centre, one for each
// degree. The gauge draws its whole face into a list of operations, which the view paints;
// it has no timer and is drawn only when something of it changes. Nothing is told when the
// new face is the same as the old one.
class bkCProg : public Control {
 public:
  bkCProg();
  ~bkCProg() override;

 private:
  // Stands before the properties, which enter themselves here.
  std::vector<AnyGaugeProperty*> properties_;

  static std::int32_t withinScale(const bkCProg& gauge, std::int32_t value);
  static std::int32_t withinTurn(const bkCProg& gauge, std::int32_t angle);
  static std::int32_t wideEnough(const bkCProg& gauge, std::int32_t span);

 public:
  GaugeProperty<std::int32_t> Max{*this, "Max", 100};
  GaugeProperty<std::int32_t> Min{*this, "Min", 0};
  // A value below `Min` becomes `Min`, one above `Max` becomes `Max`.
  GaugeProperty<std::int32_t> Value{*this, "Value", 50, PropertyEffect::Repaint, withinScale};
  GaugeProperty<ColourCode> BackColor{*this, "BackColor", kButtonFace};
  GaugeProperty<ColourCode> StartColor{*this, "StartColor", 192, PropertyEffect::RecheckAndPaint};
  GaugeProperty<ColourCode> MidColor{*this, "MidColor", 65535, PropertyEffect::RecheckAndPaint};
  GaugeProperty<ColourCode> EndColor{*this, "EndColor", 49152, PropertyEffect::RecheckAndPaint};
  GaugeProperty<ColourCode> CircleColor{*this, "CircleColor", kButtonFace};
  GaugeProperty<ColourCode> BorderColor{*this, "BorderColor", 0};
  GaugeProperty<ColourCode> TextColor{*this, "TextColor", 0xFFFFFF};
  GaugeProperty<ColourCode> NeedleColor{*this, "NeedleColor", kButtonText};
  GaugeProperty<ColourCode> TextShadowColor{*this, "TextShadowColor", 0x808080};
  GaugeProperty<ColourCode> TickColor{*this, "TickColor", 0};
  GaugeProperty<ColourCode> MaskColor{*this, "MaskColor", kButtonFace, PropertyEffect::Look};
  GaugeProperty<bool> Tricolor{*this, "Tricolor", true};
  GaugeProperty<bool> Fade{*this, "Fade", false};
  GaugeProperty<bool> ShowBorder{*this, "Border", true};
  GaugeProperty<bool> Clockwise{*this, "Clockwise", true};
  GaugeProperty<bool> ShowZeroLine{*this, "ShowZeroLine", false};
  GaugeProperty<bool> Gradient{*this, "Gradient", true};
  GaugeProperty<bool> ShowValue{*this, "ShowValue", false};
  GaugeProperty<bool> TextShadow{*this, "TextShadow", false};
  GaugeProperty<bool> AutoSize{*this, "AutoSize", true, PropertyEffect::FitAndPaint};
  GaugeProperty<bool> ShowNeedle{*this, "ShowNeedle", false};
  GaugeProperty<bool> ShowArc{*this, "ShowArc", true};
  GaugeProperty<bool> ShowCircle{*this, "ShowCircle", true};
  GaugeProperty<bool> ShowValueAsPercent{*this, "ShowValueAsPercent", false};
  // Whole turns are taken off or added: 0 to 359.
  GaugeProperty<std::int32_t> OffsetAngle{*this, "OffsetAngle", 0, PropertyEffect::Repaint,
                                          withinTurn};
  // Whole turns are taken off above 360, and what is then below 45 becomes 45.
  GaugeProperty<std::int32_t> Span{*this, "Span", 360, PropertyEffect::Repaint, wideEnough};
  GaugeProperty<std::int16_t> BorderWidth{*this, "BorderWidth", 1};  // pixels
  GaugeProperty<std::int16_t> TickSize{*this, "TickSize", 4};        // pixels
  GaugeProperty<float> TickFrequency{*this, "TickFrequency", 10};    // units of the scale
  GaugeProperty<std::int16_t> TickWidth{*this, "TickWidth", 1};      // pixels
  GaugeLength<std::int32_t> XCenter{*this, "XCenter", 50};
  GaugeLength<std::int32_t> YCenter{*this, "YCenter", 50};
  GaugeLength<std::int32_t> Radius{*this, "Radius", 25};
  GaugeLength<std::int32_t> TextOffsetX{*this, "TextOffsetX", 0};  // from the centre
  GaugeLength<std::int32_t> TextOffsetY{*this, "TextOffsetY", 0};
  GaugeLength<std::int16_t> TextShadowXOffset{*this, "TextShadowXOffset", 1};
  GaugeLength<std::int16_t> TextShadowYOffset{*this, "TextShadowYOffset", 1};
  GaugeProperty<std::int32_t> TickStyle{*this, "TickStyle", kNoTicks};
  GaugeProperty<std::int32_t> TickPosition{*this, "TickPosition", kTicksInside};
  GaugeProperty<DeviceFont> Font{*this, "Font", {}};
  GaugeProperty<DevicePicture> Picture{*this, "Picture", {}};
  GaugeProperty<DevicePicture> MaskPicture{*this, "MaskPicture", {}, PropertyEffect::Look};
  GaugeProperty<bool> Inset{*this, "Inset", false, PropertyEffect::Look};  // a sunken edge
  // Shape the control by `MaskPicture`: where that has the mask colour, it is not there.
  GaugeProperty<bool> UseMask{*this, "UseMask", false, PropertyEffect::Look};
  // Take what was drawn as the mask picture, each time anew.
  GaugeProperty<bool> AutoMask{*this, "AutoMask", false, PropertyEffect::Look};

  // Told the name of each property that has got another value, after the drawing.
  std::function<void(std::string_view)> propertyChanged;

  // Draws the face as it now is.
  void Repaint();

  // Translates the three colours of the scale anew, as when the system's have changed. The
  // next drawing has them.
  void RecheckColors();

  // Gives the control the size of its picture; without one nothing happens.
  void AutoSizeToPicture();

  // The size of the control, in pixels; 100 by 100 at first. Fits the dial to it, when
  // `AutoSize` is set, and draws. A size below 0 is none.
  void resize(std::int32_t width, std::int32_t height);
  std::int32_t width() const { return width_; }
  std::int32_t height() const { return height_; }

  // Properties out of and into a container's store, lengths in units of which there are
  // `scale` to a pixel: by default twips. What the store does not hold gets its default,
  // and what is beyond a limit is limited.
  void ReadProperties(const PropertyBag& bag, double scale = kTwipsOfPixel);
  void WriteProperties(PropertyBag& bag, double scale = kTwipsOfPixel) const;

  // The handle of the window that shows the gauge, 0 without one.
  std::uintptr_t hWnd() const { return screen_ == nullptr ? 0 : screen_->hWnd(); }

  // What the gauge shows, as a picture of the control's size.
  DevicePicture Image() const;

  // The same, good until the next drawing.
  const std::vector<DeviceOperation>& operations() const { return shown_; }

  // Whether the control has the shape of its mask.
  bool isShaped() const { return (UseMask || AutoMask) && MaskPicture.get().isSet(); }

  // Who shows the gauge from now on, or nobody. It has to live until it is taken away again,
  // or is told of the gauge's end.
  void showOn(GaugeScreen* screen);

  // The place at so many pixels from the centre and so many degrees along the scale.
  MoveToEx PointOnCircle(double distance, std::int32_t degrees) const;

  // The colour at a fraction of the scale.
  Colour ColorAt(float fraction) const;

  static constexpr double kTwipsOfPixel = 15;  // at 100 percent

 private:
  friend class AnyGaugeProperty;

  // What one drawing has in common.
  struct Face {
    float share = 0;         // of the scale that the value covers
    double degrees = 0;      // the same as degrees of arc
    std::int32_t spoke = 1;  // width of spokes, in pixels
    double radius = 0;       // of spokes
  };

  void noteWrite(const AnyGaugeProperty& property);
  void fit();
  bool paint();
  void takeMask();
  TextExtent measure(const std::string& text) const;

  Face face();
  void drawPicture();
  void drawSpoke(const Face& face, std::int32_t degrees);
  void drawCircle(const Face& face);
  void drawArc(const Face& face);
  void drawBorder(const Face& face);
  void drawTicks(const Face& face);
  void drawTick(const Face& face, std::int32_t degrees);
  void drawNeedle(const Face& face);
  void drawText();
  DeviceBox dialBox() const;

  Colour StartRGB;
  Colour MidRGB;
  Colour EndRGB;
  double fraction_ = 0;  // the last one that could be computed
  std::int32_t width_ = 100;
  std::int32_t height_ = 100;
  DeviceContext surface_;
  std::vector<DeviceOperation> shown_;
  GaugeScreen* screen_ = nullptr;
};

}  // namespace veltrin
