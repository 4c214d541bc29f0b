// The look of buttons and frames.
#pragma once

#include <QProxyStyle>

namespace veltrin {

// Fusion with flat buttons in the colour of their palette: lighter under the pointer,
// darker when pressed, pale when disabled, with a firm edge on a window's default button.
// A button or a field that has the keyboard wears a ring.
class AppStyle : public QProxyStyle {
 public:
  AppStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  QRect subElementRect(SubElement element, const QStyleOption* option,
                       const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
};

}  // namespace veltrin
