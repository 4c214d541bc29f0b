// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/sheet_text.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QPageLayout>
#include <QTextLayout>

#include "platform/qt/qt_text.h"

namespace veltrin {
namespace {

constexpr double kPointsPerInch = 72;

// Measures of Times New Roman, in parts of its size.
constexpr double kPitch = 1.15;
constexpr double kAscent = 0.891;

constexpr int kTabBlanks = 8;

// The fonts that may stand in for it, since their letters are as wide.
constexpr const char* kLiberation = "Liberation Serif";
constexpr const char* kNimbus = "Nimbus Roman";

// The smallest space between letters that Qt knows, in dots. With it none are joined into
// ligatures, which whoever searches the text of a sheet would not find.
constexpr double kHairSpace = 1.0 / 64;

}  // namespace

SheetText::SheetText(QPagedPaintDevice& device, QPainter& painter, const std::string& fontName,
                     double fontSize)
    : device_(device), painter_(painter) {
  font_.setFamilies({toQt(fontName), kLiberation, kNimbus});
  font_.setStyleHint(QFont::Times);
  font_.setLetterSpacing(QFont::AbsoluteSpacing, kHairSpace);
  font_.setPointSizeF(fontSize);
  const double dots = device.logicalDpiX() / kPointsPerInch;
  QPageLayout layout = device.pageLayout();
  layout.setUnits(QPageLayout::Point);
  const QRectF sheet = layout.fullRect(QPageLayout::Point);
  const QMarginsF unreachable = layout.minimumMargins();
  pitch_ = kPitch * fontSize * dots;
  ascent_ = kAscent * fontSize * dots;
  left_ = unreachable.left() * dots;
  width_ = (sheet.width() - unreachable.left() - unreachable.right()) * dots;
  rows_ = std::max(1, static_cast<int>(std::floor(sheet.height() * dots / pitch_)));
  option_.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option_.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
  option_.setTextDirection(Qt::LeftToRight);
  option_.setTabStopDistance(kTabBlanks * QFontMetricsF(font_, &device).horizontalAdvance(' '));
}

// A letter from another font may be higher; the letters of a row stand on one line, and the
// rows keep their pitch.
bool SheetText::add(const std::string& line) {
  QTextLayout layout(toQt(line), font_, &device_);
  layout.setTextOption(option_);
  layout.beginLayout();
  for (QTextLine row = layout.createLine(); row.isValid(); row = layout.createLine()) {
    row.setLineWidth(width_);
  }
  layout.endLayout();
  for (int number = 0; number < layout.lineCount(); ++number) {
    if (!nextRow()) return false;
    const QTextLine row = layout.lineAt(number);
    row.draw(&painter_, QPointF(left_, (row_ - 1) * pitch_ + ascent_ - row.ascent()));
  }
  return true;
}

bool SheetText::nextRow() {
  if (row_ == rows_) {
    if (!device_.newPage()) return false;
    row_ = 0;
  }
  ++row_;
  return true;
}

}  // namespace veltrin
