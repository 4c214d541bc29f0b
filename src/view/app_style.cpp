#include "view/app_style.h"

#include <QPainter>
#include <QPushButton>
#include <QStyleOption>

namespace veltrin {
namespace {

constexpr double kCorner = 4;   // radius in pixels
constexpr double kEdge = 1;     // width of a button's edge
constexpr double kRing = 2;     // width of the ring around a button with the keyboard
constexpr int kFieldInset = 4;  // pixels from a field's frame to its text
constexpr QSize kSmallestButton(88, 30);
constexpr int kHoverLighter = 108;  // percent
constexpr int kPressedDarker = 112;
constexpr int kEdgeDarker = 135;
constexpr int kDefaultEdgeDarker = 210;

// Half way from one colour to another.
QColor between(const QColor& one, const QColor& other) {
  return {(one.red() + other.red()) / 2, (one.green() + other.green()) / 2,
          (one.blue() + other.blue()) / 2};
}

QColor faceColour(const QStyleOption& option) {
  const QColor face = option.palette.color(QPalette::Active, QPalette::Button);
  if (!(option.state & QStyle::State_Enabled)) {
    return between(face, option.palette.color(QPalette::Window));
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
  const double inset = kEdge / 2;
  const QRectF edge = QRectF(option.rect).adjusted(inset, inset, -inset, -inset);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(face.darker(isDefault && enabled ? kDefaultEdgeDarker : kEdgeDarker), kEdge));
  painter.setBrush(face);
  painter.drawRoundedRect(edge, kCorner, kCorner);
  if (enabled && (option.state & QStyle::State_HasFocus)) {
    const QRectF ring = QRectF(option.rect).adjusted(kRing / 2, kRing / 2, -kRing / 2, -kRing / 2);
    painter.setPen(QPen(option.palette.color(QPalette::Highlight), kRing));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(ring, kCorner, kCorner);
  }
  painter.restore();
}

void drawFieldFrame(const QStyleOption& option, QPainter& painter) {
  const bool focused = (option.state & QStyle::State_HasFocus) != 0;
  const double width = focused ? kRing : kEdge;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(option.palette.color(focused ? QPalette::Highlight : QPalette::Dark), width));
  painter.setBrush(Qt::NoBrush);
  const QRectF edge = QRectF(option.rect).adjusted(width / 2, width / 2, -width / 2, -width / 2);
  painter.drawRoundedRect(edge, kCorner - 1, kCorner - 1);
  painter.restore();
}

}  // namespace

AppStyle::AppStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void AppStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                             QPainter* painter, const QWidget* widget) const {
  if (element == PE_FrameLineEdit) return drawFieldFrame(*option, *painter);
  if (qobject_cast<const QPushButton*>(widget) != nullptr) {
    if (element == PE_PanelButtonCommand) return drawButton(*option, *painter);
    if (element == PE_FrameFocusRect) return;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
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
  return type == CT_PushButton ? size.expandedTo(kSmallestButton) : size;
}

int AppStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                          const QWidget* widget) const {
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
