// SPDX-License-Identifier: GPL-3.0-or-later
// How a line of a list box looks.
#pragma once

#include <map>
#include <string>
#include <utility>

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QIcon>
#include <QPainter>
#include <QRect>
#include <QWidget>

#include "controls/list_view.h"
#include "view/device_painter.h"

namespace veltrin {

// Where the parts of a line are. A part that the list has no room for is empty.
struct LineParts {
  QRect check;
  QRect picture;
  QRect text;
};

// How a line stands in its list.
struct LineState {
  bool isSelected = false;  // and to be seen as that
  bool isActive = false;    // the keyboard is on the list
  bool isCurrent = false;   // and on this line
  bool isHot = false;       // the mouse is over it, and that is to be seen
};

// All lines are equally high, with their letters in the colours that are given, or as much
// darker or lighter as it takes to read them on their ground.
class LineLook {
 public:
  // Of the lines of a list in that widget, whose letters, colours and size are taken.
  LineLook(const ListView& lines, const QWidget& view, PictureSource pictures);

  // To be called when the widget's letters or colours have changed, or the list's look.
  void refresh();

  int height() const { return height_; }  // of a line, in pixels

  // The parts of a line in that place.
  LineParts partsIn(const QRect& place) const;

  // Whether a line's text is cut at the end of that place.
  bool isCut(const ListLine& line, const QRect& place) const;

  // The colours of a line: behind it, and of its letters.
  QColor groundOf(const LineState& state) const;
  QColor inkOf(const ListLine& line, const LineState& state) const;

  const QFont& lettersOf(const ListLine& line) const { return line.Bold ? bold_ : plain_; }

  void paint(QPainter& painter, const QRect& place, const ListLine& line,
             const LineState& state) const;

  // The picture behind all lines, in a widget of that size.
  bool hasGroundPicture() const { return lines_.Picture.get().isSet(); }
  void paintGround(QPainter& painter, const QRect& place) const;

 private:
  QColor colour(QPalette::ColorRole role) const;
  QColor plainInkOf(const ListLine& line) const;
  const QIcon& pictureOf(const std::string& name) const;
  void paintCheck(QPainter& painter, const QRect& place, const ListLine& line) const;
  void paintPicture(QPainter& painter, const QRect& place, const ListLine& line) const;
  void paintText(QPainter& painter, const QRect& place, const ListLine& line,
                 const LineState& state) const;
  void paintTile(QPainter& painter, const QRect& place) const;

  const ListView& lines_;
  const QWidget& view_;
  PictureSource source_;
  QFont plain_;
  QFont bold_;
  int height_ = 0;
  int rows_ = 1;  // of text in a line
  mutable std::map<std::string, QIcon> pictures_;
  mutable std::map<std::pair<QRgb, QRgb>, QColor> inks_;  // by ground and colour
};

// A text as it stands in a line: without breaks, and as much of it as a screen can show.
QString onOneLine(const std::string& text);

// The ground and the letters of a list, in the colours of the program's look when they are the
// system's for windows.
QColor groundColour(ColourCode code, const QPalette& look, QPalette::ColorGroup group);
QColor inkColour(ColourCode code, const QPalette& look, QPalette::ColorGroup group);

}  // namespace veltrin
