// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/line_look.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include <QStyle>
#include <QStyleOptionButton>
#include <QTextLayout>

#include "platform/qt/qt_text.h"
#include "view/contrast.h"

namespace veltrin {
namespace {

constexpr int kPictureSize = 16;  // pixels, both ways
constexpr int kGap = 6;           // between the parts of a line
constexpr int kInset = 4;         // from the list's edges to the first part and the last
constexpr int kAbove = 2;         // and below the letters or the picture
constexpr int kWrappedRows = 2;
constexpr double kPaleness = 0.4;  // opacity of a picture that is pale
constexpr int kHotShare = 10;      // percent of the selection's colour behind the mouse
constexpr int kPaleShare = 50;     // percent of the ink that pale letters keep

// More than a screen is wide.
constexpr std::size_t kMostBytes = 4000;

// Ways to place the picture behind the lines, by their numbers in the system. Any other tiles.
constexpr std::array<Qt::Alignment, 5> kAlignments{
    Qt::AlignLeft | Qt::AlignTop, Qt::AlignRight | Qt::AlignTop, Qt::AlignLeft | Qt::AlignBottom,
    Qt::AlignRight | Qt::AlignBottom, Qt::AlignCenter};

QColor mixed(const QColor& colour, const QColor& ground, int percent) {
  const auto mix = [percent](int one, int other) {
    return (one * percent + other * (100 - percent)) / 100;
  };
  return {mix(colour.red(), ground.red()), mix(colour.green(), ground.green()),
          mix(colour.blue(), ground.blue())};
}

}  // namespace

QString onOneLine(const std::string& text) {
  QString line = toQt(text.substr(0, kMostBytes));
  for (QChar& letter : line) {
    if (letter.category() == QChar::Other_Control) letter = QLatin1Char(' ');
  }
  return line;
}

QColor groundColour(ColourCode code, const QPalette& look, QPalette::ColorGroup group) {
  return code == kWindowBackground ? look.color(group, QPalette::Base) : toQt(translated(code));
}

QColor inkColour(ColourCode code, const QPalette& look, QPalette::ColorGroup group) {
  return code == kWindowText ? look.color(group, QPalette::Text) : toQt(translated(code));
}

LineLook::LineLook(const ListView& lines, const QWidget& view, PictureSource pictures)
    : lines_(lines), view_(view), source_(std::move(pictures)) {
  refresh();
}

void LineLook::refresh() {
  inks_.clear();
  plain_ = view_.font();
  bold_ = plain_;
  bold_.setBold(true);
  rows_ = lines_.LabelWrap ? kWrappedRows : 1;
  const int letters = std::max(QFontMetrics(plain_).height(), QFontMetrics(bold_).height()) * rows_;
  height_ = std::max(letters, kPictureSize) + 2 * kAbove;
}

QColor LineLook::colour(QPalette::ColorRole role) const { return view_.palette().color(role); }

LineParts LineLook::partsIn(const QRect& place) const {
  LineParts parts;
  int left = place.left() + kInset;
  const auto take = [&](int width, int height) {
    const QRect part(left, place.top() + (place.height() - height) / 2, width, height);
    left += width + kGap;
    return QStyle::visualRect(view_.layoutDirection(), place, part);
  };
  if (lines_.CheckBoxes) {
    const QStyle* style = view_.style();
    parts.check = take(style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &view_),
                       style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, &view_));
  }
  if (lines_.SmallIcons.get() != nullptr) parts.picture = take(kPictureSize, kPictureSize);
  parts.text = take(std::max(0, place.right() + 1 - kInset - left), place.height());
  return parts;
}

bool LineLook::isCut(const ListLine& line, const QRect& place) const {
  const int room = partsIn(place).text.width() * rows_;
  return QFontMetrics(lettersOf(line)).horizontalAdvance(onOneLine(line.Text)) > room;
}

QColor LineLook::groundOf(const LineState& state) const {
  if (state.isSelected) return colour(state.isActive ? QPalette::Highlight : QPalette::Mid);
  const QColor ground = colour(QPalette::Base);
  return state.isHot ? mixed(colour(QPalette::Highlight), ground, kHotShare) : ground;
}

QColor LineLook::plainInkOf(const ListLine& line) const {
  if (!view_.isEnabled() || line.ForeColor == kWindowText) return colour(QPalette::Text);
  return toQt(translated(line.ForeColor));
}

// The selection shows the window's own letters in the colour that belongs to it.
QColor LineLook::inkOf(const ListLine& line, const LineState& state) const {
  const QColor ground = groundOf(state);
  const bool isOwn = line.ForeColor == kWindowText && state.isSelected && state.isActive;
  QColor ink = isOwn ? colour(QPalette::HighlightedText) : plainInkOf(line);
  if (line.Ghosted) ink = mixed(ink, ground, kPaleShare);
  const auto [known, isNew] = inks_.try_emplace({ground.rgb(), ink.rgb()});
  if (isNew) known->second = readableOn(ground, ink);
  return known->second;
}

const QIcon& LineLook::pictureOf(const std::string& name) const {
  const auto [known, isNew] = pictures_.try_emplace(name);
  if (isNew && source_) known->second = source_(name);
  return known->second;
}

void LineLook::paint(QPainter& painter, const QRect& place, const ListLine& line,
                     const LineState& state) const {
  if (state.isSelected || state.isHot) painter.fillRect(place, groundOf(state));
  const LineParts parts = partsIn(place);
  if (!parts.check.isEmpty()) paintCheck(painter, parts.check, line);
  if (!parts.picture.isEmpty()) paintPicture(painter, parts.picture, line);
  paintText(painter, parts.text, line, state);
  if (state.isCurrent && state.isActive && !state.isSelected) {
    painter.setPen(colour(QPalette::Highlight));
    painter.drawRect(place.adjusted(0, 0, -1, -1));
  }
}

void LineLook::paintCheck(QPainter& painter, const QRect& place, const ListLine& line) const {
  QStyleOptionButton option;
  option.initFrom(&view_);
  option.rect = place;
  option.state.setFlag(QStyle::State_HasFocus, false);
  option.state.setFlag(QStyle::State_MouseOver, false);
  option.state |= line.Checked ? QStyle::State_On : QStyle::State_Off;
  view_.style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, &view_);
}

// A picture that is not there leaves its room blank.
void LineLook::paintPicture(QPainter& painter, const QRect& place, const ListLine& line) const {
  const auto* picture = lines_.SmallIcons.get()->find(line.SmallIcon);
  if (picture == nullptr) return;
  painter.setOpacity(line.Ghosted || !view_.isEnabled() ? kPaleness : 1);
  pictureOf(picture->name).paint(&painter, place);
  painter.setOpacity(1);
}

void LineLook::paintText(QPainter& painter, const QRect& place, const ListLine& line,
                         const LineState& state) const {
  QFont letters = lettersOf(line);
  letters.setUnderline(state.isHot);
  const QFontMetrics metrics(letters);
  painter.setFont(letters);
  painter.setPen(inkOf(line, state));
  const auto alignment =
      QStyle::visualAlignment(view_.layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
  const QString text = onOneLine(line.Text);
  const auto draw = [&](const QRect& row, const QString& part) {
    const QString shown = metrics.elidedText(part, Qt::ElideRight, place.width());
    painter.drawText(row, static_cast<int>(alignment) | Qt::TextSingleLine, shown);
  };
  if (rows_ == 1 || metrics.horizontalAdvance(text) <= place.width()) return draw(place, text);
  QTextLayout layout(text, letters);
  layout.beginLayout();
  QTextLine first = layout.createLine();
  first.setLineWidth(place.width());
  layout.endLayout();
  const int middle = place.top() + place.height() / 2;
  draw(QRect(place.left(), middle - metrics.height(), place.width(), metrics.height()),
       text.left(first.textLength()).trimmed());
  draw(QRect(place.left(), middle, place.width(), metrics.height()), text.mid(first.textLength()));
}

void LineLook::paintTile(QPainter& painter, const QRect& place) const {
  const DevicePicture& picture = lines_.Picture;
  const StretchBlt whole{{0, 0, picture.width, picture.height}, picture, kCopyPixels};
  painter.save();
  painter.translate(place.topLeft());
  DevicePainter(painter, place.size(), view_.font(), source_).paint({whole});
  painter.restore();
}

void LineLook::paintGround(QPainter& painter, const QRect& place) const {
  const DevicePicture& picture = lines_.Picture;
  const QSize size(picture.width, picture.height);
  if (!picture.isSet() || size.isEmpty()) return;
  const auto alignment = static_cast<std::size_t>(lines_.PictureAlignment.get());
  if (alignment < kAlignments.size()) {
    return paintTile(painter,
                     QStyle::alignedRect(Qt::LeftToRight, kAlignments[alignment], size, place));
  }
  for (int y = place.top(); y <= place.bottom(); y += size.height()) {
    for (int x = place.left(); x <= place.right(); x += size.width()) {
      paintTile(painter, {QPoint(x, y), size});
    }
  }
}

}  // namespace veltrin
