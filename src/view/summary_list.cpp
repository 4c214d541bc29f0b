#include "view/summary_list.h"

#include <QFontMetrics>
#include <QStyleOptionViewItem>

#include "view/appearance.h"

namespace veltrin {
namespace {

// The widest row of numbers that a test is likely to have.
const char* const kWideRow = "Speed: 100000.000 KB/s   /  800000.000 Kb/s";

}  // namespace

SummaryList::SummaryList(QWidget* parent) : QListView(parent) {
  setFont(bookLetters());
  setTextElideMode(Qt::ElideNone);
  setHorizontalScrollMode(ScrollPerPixel);
  setEditTriggers(NoEditTriggers);
}

// The height of a row is the delegate's, which knows the style's room around a text.
QSize SummaryList::minimumSizeHint() const {
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.features |= QStyleOptionViewItem::HasDisplay;
  option.text = QString::fromLatin1(kWideRow);
  const QSize row = style()->sizeFromContents(QStyle::CT_ItemViewItem, &option, {}, this);
  const int frame = 2 * frameWidth();
  return {row.width() + frame, kRows * row.height() + frame};
}

}  // namespace veltrin
