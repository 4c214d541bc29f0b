// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/app_style.h"

#include <QCheckBox>
#include <QIcon>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>

#include "view/line_list.h"
#include "view/scroll_bar_style.h"
#include "view/summary_list.h"

namespace veltrin {
namespace {

constexpr double kCorner = 4;       // radius in pixels
constexpr double kEdge = 1;         // width of a button's edge
constexpr double kRing = 2;         // width of the ring around a button with the keyboard
constexpr double kArrowHeight = 4;  // of a combo box, in pixels; it is twice as wide
constexpr int kTextFrame = 2;       // width of the frame of a text of many lines
constexpr int kFieldInset = 4;      // pixels from a field's frame to its text
constexpr QSize kSmallestButton(88, 30);
constexpr int kHoverLighter = 108;  // percent
constexpr int kPressedDarker = 112;
constexpr int kEdgeDarker = 135;
constexpr int kPictureInset = 12;             // pixels from a button's edge to its picture
constexpr QMargins kPictureEdge{5, 4, 5, 4};  // around a picture without a text
constexpr int kPictureGap = 10;               // from the picture to the text
constexpr double kPaleness = 0.4;             // opacity of a picture that is disabled
constexpr int kDefaultEdgeDarker = 210;

// Whether a widget has the frame of a field of many lines.
bool isPaper(const QWidget* widget) {
  return qobject_cast<const QPlainTextEdit*>(widget) != nullptr ||
         dynamic_cast<const SummaryList*>(widget) != nullptr ||
         dynamic_cast<const LineList*>(widget) != nullptr;
}

// A quarter of one colour on another.
QColor washed(const QColor& colour, const QColor& ground) {
  const auto mix = [](int one, int other) { return (one + 3 * other) / 4; };
  return {mix(colour.red(), ground.red()), mix(colour.green(), ground.green()),
          mix(colour.blue(), ground.blue())};
}

QColor faceColour(const QStyleOption& option) {
  const QColor face = option.palette.color(QPalette::Active, QPalette::Button);
  if (!(option.state & QStyle::State_Enabled)) {
    return washed(face, option.palette.color(QPalette::Window));
  }
  if (option.state & (QStyle::State_Sunken | QStyle::State_On)) return face.darker(kPressedDarker);
  return option.state & QStyle::State_MouseOver ? face.lighter(kHoverLighter) : face;
}

void drawButton(const QStyleOption& option, QPainter& painter) {
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
  const bool enabled = option.state & QStyle::State_Enabled;
  const bool isDefault =
      button != nullptr && (button->features & QStyleOptionButton::DefaultButton);
  const QColor face = faceColour(option);
  const bool isFlat = button != nullptr && (button->features & QStyleOptionButton::Flat);
  const bool isTouched = option.state & (QStyle::State_MouseOver | QStyle::State_Sunken);
  const double inset = kEdge / 2;
  const QRectF edge = QRectF(option.rect).adjusted(inset, inset, -inset, -inset);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(face.darker(isDefault && enabled ? kDefaultEdgeDarker : kEdgeDarker), kEdge));
  painter.setBrush(isFlat && !(enabled && isTouched) ? QBrush(Qt::NoBrush) : QBrush(face));
  painter.drawRoundedRect(edge, kCorner, kCorner);
  if (enabled && (option.state & QStyle::State_HasFocus)) {
    const QRectF ring = QRectF(option.rect).adjusted(kRing / 2, kRing / 2, -kRing / 2, -kRing / 2);
    painter.setPen(QPen(option.palette.color(QPalette::Highlight), kRing));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(ring, kCorner, kCorner);
  }
  painter.restore();
}

void drawPictureAndText(const QProxyStyle& style, const QStyleOptionButton& button,
                        QPainter& painter, const QWidget* widget) {
  const bool enabled = button.state & QStyle::State_Enabled;
  QRect picture(QPoint(), button.iconSize);
  picture.moveCenter(button.rect.center());
  if (!button.text.isEmpty()) picture.moveLeft(button.rect.left() + kPictureInset);
  button.icon.paint(&painter, QStyle::visualRect(button.direction, button.rect, picture),
                    Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
  const QRect text =
      button.rect.adjusted(picture.right() - button.rect.left() + kPictureGap, 0, -kPictureGap, 0);
  const bool underlines = style.styleHint(QStyle::SH_UnderlineShortcut, &button, widget) != 0;
  style.drawItemText(&painter, QStyle::visualRect(button.direction, button.rect, text),
                     static_cast<int>(QStyle::visualAlignment(button.direction,
                                                              Qt::AlignLeft | Qt::AlignVCenter)) |
                         (underlines ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                     button.palette, enabled, button.text, QPalette::ButtonText);
}

// Around the text of a box or a choice that has the keyboard.
void drawRing(const QStyleOption& option, QPainter& painter) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(option.palette.color(QPalette::Highlight), kRing));
  const QRectF ring = QRectF(option.rect).adjusted(kRing / 2, kRing / 2, -kRing / 2, -kRing / 2);
  painter.drawRoundedRect(ring, kCorner - 1, kCorner - 1);
  painter.restore();
}

// `ground` is painted behind the frame, where the field itself does not reach.
void drawFieldFrame(const QStyleOption& option, QPainter& painter,
                    const QBrush& ground = Qt::NoBrush) {
  const bool focused = (option.state & QStyle::State_HasFocus) != 0;
  const double width = focused ? kRing : kEdge;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(option.palette.color(focused ? QPalette::Highlight : QPalette::Dark), width));
  painter.setBrush(ground);
  const QRectF edge = QRectF(option.rect).adjusted(width / 2, width / 2, -width / 2, -width / 2);
  painter.drawRoundedRect(edge, kCorner - 1, kCorner - 1);
  painter.restore();
}

// A field with an arrow at its end; what is typed stands in a field of its own inside.
void drawComboBox(const QStyle& style, const QStyleOptionComboBox& box, QPainter& painter,
                  const QWidget* widget) {
  const bool enabled = box.state & QStyle::State_Enabled;
  drawFieldFrame(box, painter, box.palette.base());
  const QRectF place =
      style.subControlRect(QStyle::CC_ComboBox, &box, QStyle::SC_ComboBoxArrow, widget);
  const QPointF tip = place.center() + QPointF(0, kArrowHeight / 2);
  const QPolygonF arrow{tip, tip + QPointF(-kArrowHeight, -kArrowHeight),
                        tip + QPointF(kArrowHeight, -kArrowHeight)};
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const bool isTouched = enabled && (box.state & QStyle::State_MouseOver);
  painter.setBrush(box.palette.color(isTouched ? QPalette::Text : QPalette::PlaceholderText));
  painter.drawPolygon(arrow);
  painter.restore();
}

// What has come of a progress, in the bar's own colour, whose darker edge tells it from the
// ground even where the colour is as light as that.
void drawProgress(const QStyleOptionProgressBar& bar, QPainter& painter) {
  const double whole = bar.maximum - bar.minimum;
  const double part = whole > 0 ? (bar.progress - bar.minimum) / whole : 0;
  if (part <= 0) return;
  QRectF filled = QRectF(bar.rect).adjusted(kEdge, kEdge, -kEdge, -kEdge);
  const double empty = filled.width() * (1 - part);
  const bool isMirrored = bar.direction == Qt::RightToLeft;
  filled.adjust(isMirrored ? empty : 0, 0, isMirrored ? 0 : -empty, 0);
  const QColor colour = bar.palette.color(QPalette::Highlight);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour.darker(kDefaultEdgeDarker), kEdge));
  painter.setBrush(colour);
  const double inset = kEdge / 2;
  painter.drawRoundedRect(filled.adjusted(inset, inset, -inset, -inset), kCorner - 2, kCorner - 2);
  painter.restore();
}

// A text that cannot be typed into and is too long for its field ends in dots.
QStyleOptionComboBox withWhatFits(const QStyle& style, const QStyleOptionComboBox& box,
                                  const QWidget* widget) {
  const QRect field =
      style.subControlRect(QStyle::CC_ComboBox, &box, QStyle::SC_ComboBoxEditField, widget);
  QStyleOptionComboBox fitting(box);
  fitting.currentText =
      box.fontMetrics.elidedText(box.currentText, Qt::ElideRight, field.width() - kFieldInset);
  fitting.palette.setBrush(QPalette::ButtonText, box.palette.text());
  return fitting;
}

void drawMenuBarItem(const QStyleOptionMenuItem& item, QPainter& painter) {
  const bool isChosen = item.state & QStyle::State_Selected;
  painter.fillRect(item.rect,
                   item.palette.color(isChosen ? QPalette::Highlight : QPalette::Window));
  painter.setPen(item.palette.color(isChosen ? QPalette::HighlightedText : QPalette::WindowText));
  painter.drawText(item.rect, Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine,
                   item.text);
}

}  // namespace

AppStyle::AppStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void AppStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                             QPainter* painter, const QWidget* widget) const {
  if (element == PE_PanelMenuBar) return;
  if (element == PE_FrameLineEdit) return drawFieldFrame(*option, *painter);
  if (element == PE_Frame && isPaper(widget)) {
    return drawFieldFrame(*option, *painter, option->palette.base());
  }
  if (qobject_cast<const QPushButton*>(widget) != nullptr) {
    if (element == PE_PanelButtonCommand) return drawButton(*option, *painter);
    if (element == PE_FrameFocusRect) return;
  }
  const bool isTicked = qobject_cast<const QCheckBox*>(widget) != nullptr ||
                        qobject_cast<const QRadioButton*>(widget) != nullptr;
  if (isTicked && element == PE_FrameFocusRect) return drawRing(*option, *painter);
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void AppStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                           const QWidget* widget) const {
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
  if (element == CE_PushButtonLabel && button != nullptr && !button->icon.isNull()) {
    return drawPictureAndText(*this, *button, *painter, widget);
  }
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (element == CE_MenuBarItem && item != nullptr) return drawMenuBarItem(*item, *painter);
  if (element == CE_MenuBarEmptyArea) {
    return painter->fillRect(option->rect, option->palette.color(QPalette::Window));
  }
  if (element == CE_ProgressBarGroove) {
    return drawFieldFrame(*option, *painter, option->palette.base());
  }
  const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
  if (element == CE_ProgressBarContents && bar != nullptr) return drawProgress(*bar, *painter);
  const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
  if (element == CE_ComboBoxLabel && box != nullptr && !box->editable) {
    const QStyleOptionComboBox fitting = withWhatFits(*this, *box, widget);
    return QProxyStyle::drawControl(element, &fitting, painter, widget);
  }
  const bool isFlat = button != nullptr && (button->features & QStyleOptionButton::Flat);
  if (element == CE_PushButtonBevel && isFlat) return drawButton(*option, *painter);
  QProxyStyle::drawControl(element, option, painter, widget);
}

void AppStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                  QPainter* painter, const QWidget* widget) const {
  const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
  if (control == CC_ComboBox && box != nullptr) return drawComboBox(*this, *box, *painter, widget);
  const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (control == CC_ScrollBar && bar != nullptr) {
    return drawScrollBar(*this, *bar, *painter, widget);
  }
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QPixmap AppStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                                      const QStyleOption* option) const {
  if (mode != QIcon::Disabled) return QProxyStyle::generatedIconPixmap(mode, pixmap, option);
  QPixmap pale(pixmap.size());
  pale.fill(Qt::transparent);
  QPainter painter(&pale);
  painter.setOpacity(kPaleness);
  painter.drawPixmap(QRect(QPoint(), pale.size()), pixmap);
  return pale;
}

QRect AppStyle::subElementRect(SubElement element, const QStyleOption* option,
                               const QWidget* widget) const {
  const QRect place = QProxyStyle::subElementRect(element, option, widget);
  if (element != SE_LineEditContents) return place;
  return place.adjusted(kFieldInset, 0, -kFieldInset, 0);
}

QSize AppStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                 const QSize& contents, const QWidget* widget) const {
  const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  if (type != CT_PushButton) return size;
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
  const bool hasPicture = button != nullptr && !button->icon.isNull();
  if (hasPicture && button->text.isEmpty()) return button->iconSize.grownBy(kPictureEdge);
  const QSize whole = hasPicture ? size.grownBy({kPictureInset, 0, kPictureGap, 0}) : size;
  return whole.expandedTo(kSmallestButton);
}

int AppStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                          const QWidget* widget) const {
  if (metric == PM_DefaultFrameWidth && isPaper(widget)) return kTextFrame;
  if (metric == PM_ButtonShiftHorizontal || metric == PM_ButtonShiftVertical) return 0;
  return QProxyStyle::pixelMetric(metric, option, widget);
}

// Every combo box drops its list below itself, and no dialog draws icons on its buttons.
int AppStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                        QStyleHintReturn* returned) const {
  if (hint == SH_ComboBox_Popup || hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  return QProxyStyle::styleHint(hint, option, widget, returned);
}

}  // namespace veltrin
