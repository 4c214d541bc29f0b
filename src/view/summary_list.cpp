// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/summary_list.h"

#include <QFontMetrics>
#include <QStyleOptionViewItem>

#include "view/appearance.h"

namespace veltrin {
namespace {

constexpr int kSpace = 5;  // pixels around the rows

// The widest row of numbers that a test is likely to have.
const char* const kWideRow = "Speed: 100000.000 KB/s   /  800000.000 Kb/s";

}  // namespace

SummaryList::SummaryList(QWidget* parent) : QListView(parent) {
  setFont(bookLetters());
  setTextElideMode(Qt::ElideNone);
  setHorizontalScrollMode(ScrollPerPixel);
  setEditTriggers(NoEditTriggers);
  setViewportMargins(kSpace, kSpace, kSpace, kSpace);
  takeKeyboardWithRows();
}

void SummaryList::reset() {
  QListView::reset();
  takeKeyboardWithRows();
}

void SummaryList::rowsInserted(const QModelIndex& parent, int first, int last) {
  QListView::rowsInserted(parent, first, last);
  takeKeyboardWithRows();
}

void SummaryList::takeKeyboardWithRows() {
  const bool hasRows = model() != nullptr && model()->rowCount() > 0;
  setFocusPolicy(hasRows ? Qt::StrongFocus : Qt::NoFocus);
}

// The height of a row is the delegate's, which knows the style's room around a text.
QSize SummaryList::minimumSizeHint() const {
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.features |= QStyleOptionViewItem::HasDisplay;
  option.text = QString::fromLatin1(kWideRow);
  const QSize row = style()->sizeFromContents(QStyle::CT_ItemViewItem, &option, {}, this);
  const int around = 2 * (frameWidth() + kSpace);
  return {row.width() + around, kRows * row.height() + around};
}

}  // namespace veltrin
