// SPDX-License-Identifier: GPL-3.0-or-later
// Text on the sheets of a printer.
#pragma once

#include <string>

#include <QFont>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextOption>

namespace veltrin {

// Writes lines from the upper edge of a sheet on, at the pitch of Times New Roman, whatever
// font stands in for it, so that a counted page fits its sheet. To the left and right it
// keeps to what the printer can reach. The device has no margins (QPageLayout::FullPageMode).
class SheetText {
 public:
  // `painter` paints on `device`; both live longer. The size is in points, above 0.
  SheetText(QPagedPaintDevice& device, QPainter& painter, const std::string& fontName,
            double fontSize);

  // A line that is too long is folded, between words where it can be; behind the last row of
  // a sheet the next one begins. Returns false when the printer gives no other sheet.
  bool add(const std::string& line);

 private:
  bool nextRow();

  QPagedPaintDevice& device_;
  QPainter& painter_;
  QFont font_;
  QTextOption option_;
  double pitch_;   // this and what follows is in dots of the device
  double ascent_;  // of the letters, from the upper edge of their row
  double left_;
  double width_;
  int rows_;     // of a sheet
  int row_ = 0;  // the next one
};

}  // namespace veltrin
