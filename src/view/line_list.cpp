// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/line_list.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include "view/line_editor.h"

namespace veltrin {
namespace {

constexpr int kFrame = 17;  // ms; 60 frames in a second

}  // namespace

LineList::LineList(QWidget* parent) : QListView(parent), model_(new LineModel(this)) {
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
  setEditTriggers(NoEditTriggers);
  setModel(model_);
  setItemDelegate(new LineEditor(
      this, [this](int row) { return partsOf(row).text; },
      [this](int row, const QString& text) { endEdit(row, text); }));
  pause_.setSingleShot(true);
  pause_.setTimerType(Qt::PreciseTimer);
  pause_.callOnTimeout(this, [this] { catchUp(); });
}

LineList::~LineList() { release(); }

void LineList::setList(LVListBox& list, Binding& binding, PictureSource pictures) {
  release();
  list_ = &list;
  binding_ = &binding;
  pictures_ = std::move(pictures);
  look_ = std::make_unique<LineLook>(list.ListView1, *this, pictures_);
  model_->setLines(&list.ListView1);
  list.ListView1.setScreen(this);
  observe(binding);
  connect(binding.receiver(), &QObject::destroyed, this, [this] { forget(); });
  noteSelection();
  if (list.ListIndex() >= 0) EnsureVisible(static_cast<std::size_t>(list.ListIndex()));
}

void LineList::release() {
  if (list_ != nullptr) list_->ListView1.setScreen(nullptr);
  forget();
}

void LineList::forget() {
  list_ = nullptr;
  binding_ = nullptr;
  pause_.stop();
  hasNews_ = false;
  isReset_ = false;
  changed_.reset();
  revealed_ = -1;
  look_.reset();
  const QScopedValueRollback updating(isCatchingUp_, true);
  model_->setLines(nullptr);
}

// Lines that come at the end, which may be many, are told together; one that comes or goes
// among the others at once, as it gives them other numbers.
void LineList::noteInserted(std::size_t index) {
  if (!isReset_ && index < static_cast<std::size_t>(model_->shown())) {
    const QScopedValueRollback updating(isCatchingUp_, true);
    model_->noteInserted(index);
    if (revealed_ >= static_cast<int>(index)) ++revealed_;
  }
  schedule();
}

void LineList::noteRemoved(std::size_t index) {
  if (!isReset_) {
    const QScopedValueRollback updating(isCatchingUp_, true);
    model_->noteRemoved(index);
    if (revealed_ > static_cast<int>(index)) --revealed_;
  }
  isSelectionNew_ = true;
  schedule();
}

void LineList::noteChanged(std::size_t index) {
  const int row = static_cast<int>(index);
  if (!changed_) changed_ = Rows{row, row};
  changed_->first = std::min(changed_->first, row);
  changed_->last = std::max(changed_->last, row);
  schedule();
}

void LineList::noteReset() {
  isReset_ = true;
  isSelectionNew_ = true;
  revealed_ = -1;
  schedule();
}

void LineList::noteSelection() {
  isSelectionNew_ = true;
  schedule();
}

void LineList::EnsureVisible(std::size_t index) {
  revealed_ = static_cast<int>(index);
  schedule();
}

void LineList::StartLabelEdit(std::size_t index) {
  catchUp();
  const int row = static_cast<int>(index);
  reveal(row, QListView::EnsureVisible);
  QListView::edit(model_->index(row));
}

// Behind the lock everything that has happened comes to the screen as one painting.
void LineList::lockDrawing(bool locked) {
  isLocked_ = locked;
  if (!locked) catchUp();
  viewport()->setUpdatesEnabled(!locked);
  if (hasNews_) schedule();
}

// Repaints now, unless that was done in the same frame.
void LineList::Refresh() {
  if (!isVisible() || restOfFrame() > 0) return schedule();
  hasNews_ = true;
  catchUp();
  viewport()->repaint();
}

int LineList::restOfFrame() const {
  const qint64 rest = sincePainted_.isValid() ? kFrame - sincePainted_.elapsed() : 0;
  return static_cast<int>(std::max<qint64>(rest, 0));
}

void LineList::schedule() {
  hasNews_ = true;
  if (!pause_.isActive() && !isLocked_) pause_.start(restOfFrame());
}

void LineList::catchUp() {
  if (!hasNews_ || isLocked_ || isCatchingUp_ || list_ == nullptr) return;
  const QScopedValueRollback updating(isCatchingUp_, true);
  pause_.stop();
  hasNews_ = false;
  if (std::exchange(isReset_, false)) {
    model_->restart();
    executeDelayedItemsLayout();
  } else {
    model_->takeInNew();
  }
  if (const auto rows = std::exchange(changed_, {})) model_->noteChanged(rows->first, rows->last);
  if (std::exchange(isSelectionNew_, false)) showSelection();
  updateGeometries();
  if (const int row = std::exchange(revealed_, -1); row >= 0) {
    reveal(std::min(row, model_->shown() - 1), QListView::EnsureVisible);
  }
  viewport()->update();
}

// Mostly one line is selected, and the others need not be looked at.
void LineList::showSelection() {
  const int row = list_->ListIndex();
  const QModelIndex last = model_->index(row);
  if (list_->ListView1.selectedCount() > 1) {
    selectRanges();
  } else if (last.isValid()) {
    selectionModel()->select(last, QItemSelectionModel::ClearAndSelect);
  } else {
    selectionModel()->clearSelection();
  }
  if (last.isValid()) selectionModel()->setCurrentIndex(last, QItemSelectionModel::NoUpdate);
}

void LineList::selectRanges() {
  QItemSelection selection;
  const ListView& lines = list_->ListView1;
  const int count = model_->shown();
  for (int row = 0; row < count; ++row) {
    if (!lines.line(static_cast<std::size_t>(row)).Selected) continue;
    const int first = row;
    while (row + 1 < count && lines.line(static_cast<std::size_t>(row) + 1).Selected) ++row;
    selection.select(model_->index(first), model_->index(row));
  }
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

// Places. The viewport has 0 at its upper edge.

int LineList::verticalOffset() const { return verticalScrollBar()->value(); }

int LineList::rowAt(int y) const {
  const int row = look_ ? (y + verticalOffset()) / look_->height() : -1;
  return y + verticalOffset() >= 0 && row < model_->shown() ? row : -1;
}

QRect LineList::visualRect(const QModelIndex& index) const {
  if (!index.isValid() || !look_) return {};
  const int height = look_->height();
  return {0, index.row() * height - verticalOffset(), viewport()->width(), height};
}

QModelIndex LineList::indexAt(const QPoint& place) const {
  const bool isInside = place.x() >= 0 && place.x() < viewport()->width();
  return isInside ? model_->index(rowAt(place.y())) : QModelIndex();
}

LineParts LineList::partsOf(int row) const {
  return look_ ? look_->partsIn(visualRect(model_->index(row))) : LineParts();
}

// Behind QListView, which would lay out every line, here and wherever else a base is named.
void LineList::doItemsLayout() {
  if (look_) look_->refresh();
  QAbstractItemView::doItemsLayout();  // NOLINT(bugprone-parent-virtual-call)
}

void LineList::updateGeometries() {
  QAbstractItemView::updateGeometries();  // NOLINT(bugprone-parent-virtual-call)
  const int height = look_ ? look_->height() : 0;
  QScrollBar* bar = verticalScrollBar();
  bar->setSingleStep(height);
  bar->setPageStep(viewport()->height());
  bar->setRange(0, std::max(0, model_->shown() * height - viewport()->height()));
}

void LineList::reveal(int row, ScrollHint hint) {
  if (row < 0 || !look_) return;
  const int height = look_->height();
  const int room = viewport()->height();
  const int top = row * height;
  const int last = top + height - room;  // with the line at the lower edge
  const int now = verticalOffset();
  int place = now;
  if (hint == QListView::PositionAtTop || (hint == QListView::EnsureVisible && now > top)) {
    place = top;
  } else if (hint == QListView::PositionAtBottom ||
             (hint == QListView::EnsureVisible && now < last)) {
    place = std::min(last, top);
  } else if (hint == QListView::PositionAtCenter) {
    place = top - (room - height) / 2;
  }
  verticalScrollBar()->setValue(place);
}

// While the list catches up, it is the program that says what comes into view.
void LineList::scrollTo(const QModelIndex& index, ScrollHint hint) {
  if (!isCatchingUp_) reveal(index.row(), hint);
}

// A picture behind the lines stays where it is.
void LineList::scrollContentsBy(int dx, int dy) {
  setHover(-1);
  if (look_ && look_->hasGroundPicture()) {
    viewport()->update();
    updateEditorGeometries();
  } else {
    viewport()->scroll(dx, dy);
  }
}

void LineList::dataChanged(const QModelIndex& first, const QModelIndex& last,
                           const QList<int>& roles) {
  QAbstractItemView::dataChanged(first, last, roles);  // NOLINT(bugprone-parent-virtual-call)
}

void LineList::rowsInserted(const QModelIndex& parent, int first, int last) {
  QAbstractItemView::rowsInserted(parent, first, last);  // NOLINT(bugprone-parent-virtual-call)
}

void LineList::rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) {
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  QAbstractItemView::rowsAboutToBeRemoved(parent, first, last);
}

// Painting.

bool LineList::hasKeyboard() const {
  const QWidget* focus = QApplication::focusWidget();
  return focus != nullptr && (focus == this || isAncestorOf(focus));
}

LineState LineList::stateOf(int row, const ListLine& line) const {
  LineState state;
  state.isActive = hasKeyboard();
  state.isCurrent = currentIndex().row() == row;
  const bool isEdited = isPersistentEditorOpen(model_->index(row));
  const bool isSeen = state.isActive || !list_->HideSelection;
  state.isSelected = line.Selected && isSeen && !isEdited;
  state.isActive = state.isActive && !isEdited;
  state.isHot = row == hover_ && isEnabled();
  return state;
}

void LineList::paintEvent(QPaintEvent* event) {
  if (list_ == nullptr) return;
  QPainter painter(viewport());
  look_->paintGround(painter, viewport()->rect());
  const int height = look_->height();
  const int first = (event->rect().top() + verticalOffset()) / height;
  const int last = (event->rect().bottom() + verticalOffset()) / height;
  for (int row = first; row <= last; ++row) {
    const ListLine* line = model_->find(row);
    if (line == nullptr) break;
    look_->paint(painter, visualRect(model_->index(row)), *line, stateOf(row, *line));
  }
  painter.end();
  sincePainted_.start();
}

}  // namespace veltrin
