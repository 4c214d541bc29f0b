// SPDX-License-Identifier: GPL-3.0-or-later
// What the user does to the lines of a list box.
#include <algorithm>
#include <memory>
#include <utility>

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>

#include "platform/qt/qt_text.h"
#include "view/line_list.h"
#include "view/windows_keys.h"

namespace veltrin {

void LineList::post(std::function<void(LVListBox&)> action) const {
  if (binding_ == nullptr) return;
  binding_->post([list = list_, action = std::move(action)] { action(*list); });
}

void LineList::post(OnLine action, int row) const {
  if (list_ == nullptr) return;
  post([action, index = static_cast<std::size_t>(row),
        life = list_->ListView1.life()](LVListBox& list) { (list.*action)(index, life); });
}

// The user sees the list as it is now before anything is done to a line of it.
bool LineList::viewportEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      catchUp();
      break;
    case QEvent::Leave:
      setHover(-1);
      break;
    case QEvent::ToolTip: {
      const auto& help = static_cast<const QHelpEvent&>(*event);
      if (showTip(help.pos(), help.globalPos())) return true;
      break;
    }
    default:
      break;
  }
  return QListView::viewportEvent(event);
}

// A text that is cut has itself as its tip, else the list has its own.
bool LineList::showTip(const QPoint& place, const QPoint& onScreen) {
  const QModelIndex index = indexAt(place);
  const ListLine* line = index.isValid() ? model_->find(index.row()) : nullptr;
  const bool isCut = line != nullptr && look_->isCut(*line, visualRect(index));
  if (!isCut && toolTip().isEmpty()) return false;
  const QString text = isCut ? onOneLine(line->Text).toHtmlEscaped() : toolTip();
  QToolTip::showText(onScreen, text, viewport(), isCut ? visualRect(index) : QRect());
  return true;
}

bool LineList::isCheckAt(const QPoint& place) const {
  const QModelIndex index = indexAt(place);
  return index.isValid() && partsOf(index.row()).check.contains(place);
}

// A press on a check box is none on the line.
void LineList::mousePressEvent(QMouseEvent* event) {
  const QPoint place = event->position().toPoint();
  const bool isLeft = event->button() == Qt::LeftButton;
  if (isLeft) {
    pressed_ = rowAt(place.y());
    isClick_ = true;
  }
  ticking_ = isLeft && isCheckAt(place) ? pressed_ : -1;
  if (ticking_ < 0) QListView::mousePressEvent(event);
}

void LineList::mouseMoveEvent(QMouseEvent* event) {
  const QPoint place = event->position().toPoint();
  if (event->buttons() == Qt::NoButton) setHover(indexAt(place).row());
  if (ticking_ < 0) QListView::mouseMoveEvent(event);
}

void LineList::setHover(int row) {
  if (list_ == nullptr || row == hover_) return;
  const bool selects = list_->HoverSelection;
  const int before = std::exchange(hover_, list_->HotTracking || selects ? row : -1);
  for (const int each : {before, hover_}) {
    if (each >= 0) viewport()->update(visualRect(model_->index(each)));
  }
  if (!selects || hover_ < 0) return;
  selectionModel()->setCurrentIndex(model_->index(hover_), QItemSelectionModel::ClearAndSelect);
}

// The line is named as it is when the button comes up, before anything comes of that.
void LineList::mouseReleaseEvent(QMouseEvent* event) {
  const QPoint place = event->position().toPoint();
  const bool isLeft = event->button() == Qt::LeftButton;
  const int row = viewport()->rect().contains(place) ? rowAt(place.y()) : -1;
  const bool isClick = isLeft && isClick_ && row == pressed_ && viewport()->rect().contains(place);
  if (isClick && ticking_ >= 0) {
    if (isCheckAt(place)) post(&LVListBox::tick, row);
  } else if (isClick && row >= 0) {
    post(&LVListBox::clickItem, row);
  }
  if (isClick) post([](LVListBox& list) { list.clickList(); });
  if (ticking_ < 0) QListView::mouseReleaseEvent(event);
  if (!isLeft) return;
  pressed_ = -1;
  ticking_ = -1;
  isClick_ = false;
  isFocusing_ = false;
}

void LineList::mouseDoubleClickEvent(QMouseEvent* event) {
  const QPoint place = event->position().toPoint();
  if (event->button() == Qt::LeftButton && isCheckAt(place)) return mousePressEvent(event);
  isClick_ = false;
  if (event->button() == Qt::LeftButton) post([](LVListBox& list) { list.doubleClick(); });
  QListView::mouseDoubleClickEvent(event);
}

// A click that brings the keyboard to the list does not yet edit what was selected before.
void LineList::focusInEvent(QFocusEvent* event) {
  isFocusing_ = event->reason() == Qt::MouseFocusReason;
  QListView::focusInEvent(event);
}

bool LineList::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
  if (trigger == SelectedClicked && isFocusing_) return false;
  const bool isBegun = QListView::edit(index, trigger, event);
  if (isBegun && list_ != nullptr) editLife_ = list_->ListView1.life();
  return isBegun;
}

// The key Tab ends an edit and begins no other.
void LineList::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  const bool goesOn = hint == QAbstractItemDelegate::EditNextItem ||
                      hint == QAbstractItemDelegate::EditPreviousItem;
  QListView::closeEditor(editor, goesOn ? QAbstractItemDelegate::NoHint : hint);
}

// A routine that wants a key for itself has run by then unless the gate is closed, and the
// key waits while it is.
bool LineList::isTakenByRoutine(const QKeyEvent& key) {
  const auto isTaken = std::make_shared<bool>(false);
  const std::int16_t code = keyCodeOf(key);
  const std::int16_t character = characterOf(key);
  post([isTaken, code, shift = shiftOf(key)](LVListBox& list) {
    *isTaken = code != 0 && !list.pressKey(code, shift);
  });
  if (*isTaken || character == 0) return *isTaken;
  post([isTaken, character](LVListBox& list) { *isTaken = !list.typeKey(character); });
  return *isTaken;
}

void LineList::keyPressEvent(QKeyEvent* event) {
  catchUp();
  const QPointer<LineList> alive(this);
  if (isTakenByRoutine(*event) || !alive || list_ == nullptr) return;
  catchUp();
  if (event->matches(QKeySequence::Copy)) return copySelected();
  const bool ticks = event->key() == Qt::Key_Space && list_->CheckBoxes &&
                     event->modifiers() == Qt::NoModifier && currentIndex().isValid();
  if (ticks) return post(&LVListBox::tick, currentIndex().row());
  QListView::keyPressEvent(event);
}

void LineList::keyReleaseEvent(QKeyEvent* event) {
  post([code = keyCodeOf(*event), shift = shiftOf(*event)](LVListBox& list) {
    if (code != 0) list.releaseKey(code, shift);
  });
  QListView::keyReleaseEvent(event);
}

void LineList::copySelected() const {
  QModelIndexList indexes = selectedIndexes();
  if (indexes.isEmpty()) return;
  std::sort(indexes.begin(), indexes.end());
  QStringList texts;
  for (const QModelIndex& index : indexes) texts += index.data().toString();
  QGuiApplication::clipboard()->setText(texts.join(QLatin1Char('\n')));
}

QModelIndex LineList::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
  const int count = model_->shown();
  if (count == 0 || !look_) return {};
  const int page = std::max(1, viewport()->height() / look_->height() - 1);
  const int now = currentIndex().row();
  if (now < 0 && action != MoveEnd) return model_->index(0);
  int row = now;
  switch (action) {
    case MoveUp:
    case MovePrevious:
      row = now - 1;
      break;
    case MoveDown:
    case MoveNext:
      row = now + 1;
      break;
    case MovePageUp:
      row = now - page;
      break;
    case MovePageDown:
      row = now + page;
      break;
    case MoveHome:
      row = 0;
      break;
    case MoveEnd:
      row = count - 1;
      break;
    default:
      break;
  }
  return model_->index(std::clamp(row, 0, count - 1));
}

void LineList::setSelection(const QRect& place, QItemSelectionModel::SelectionFlags command) {
  if (!look_) return;
  const QRect area = place.normalized();
  const int height = look_->height();
  const int first = std::max(0, (area.top() + verticalOffset()) / height);
  const int last = std::min(model_->shown() - 1, (area.bottom() + verticalOffset()) / height);
  QItemSelection selection;
  if (first <= last) selection.select(model_->index(first), model_->index(last));
  selectionModel()->select(selection, command);
}

QRegion LineList::visualRegionForSelection(const QItemSelection& selection) const {
  QRegion region;
  for (const QItemSelectionRange& range : selection) {
    region += visualRect(range.topLeft()).united(visualRect(range.bottomRight()));
  }
  return region & viewport()->rect();
}

// The line that was selected last is the last one. A list that does not take the selection is
// shown as it is.
void LineList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QListView::selectionChanged(selected, deselected);
  if (isCatchingUp_ || list_ == nullptr) return;
  std::vector<std::size_t> rows;
  for (const QModelIndex& index : selectionModel()->selectedIndexes()) {
    rows.push_back(static_cast<std::size_t>(index.row()));
  }
  const auto current = static_cast<std::size_t>(currentIndex().row());
  const auto last = std::find(rows.begin(), rows.end(), current);
  if (last != rows.end()) std::rotate(last, last + 1, rows.end());
  noteSelection();
  post([rows = std::move(rows), life = list_->ListView1.life()](LVListBox& list) {
    list.takeSelection(rows, life);
  });
}

// An edit that the program ends, by selecting another line say, is told when the list has
// caught up: its routine may do anything to the list. One during which lines went or changed
// their places is void.
void LineList::endEdit(int row, const QString& text) {
  if (list_ == nullptr) return;
  const auto index = static_cast<std::size_t>(row);
  const auto end = [index, life = editLife_, text = fromQt(text)](LVListBox& list) {
    list.endEdit(index, life, text);
  };
  if (isCatchingUp_) {
    later_.call([this, end] { post(end); });
  } else {
    post(end);
  }
}

}  // namespace veltrin
