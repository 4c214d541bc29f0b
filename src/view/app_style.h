// SPDX-License-Identifier: GPL-3.0-or-later
// The look of buttons and frames.
#pragma once

#include <QProxyStyle>

namespace veltrin {

// Fusion with flat buttons in the colour of their palette: lighter under the pointer,
// darker when pressed, pale when disabled, with a firm edge on a window's default button.
// Fields, lists, menu bars, scroll bars and bars of progress are as flat as the buttons.
// A button, a box to tick or a field that has the keyboard wears a ring. A button with a picture
// has it at its left and the text beside it, or in its middle without a text; a flat one is a mere
// outline until the pointer comes. Pictures of what is disabled are pale.
class AppStyle : public QProxyStyle {
 public:
  AppStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
  QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                              const QStyleOption* option) const override;
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
