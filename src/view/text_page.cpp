// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/text_page.h"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>

namespace veltrin {
namespace {

QTextCursor endOf(QTextDocument& document) {
  QTextCursor end(&document);
  end.movePosition(QTextCursor::End);
  return end;
}

}  // namespace

TextPage::TextPage(TextBox& box, QPlainTextEdit& view, Binding& binding)
    : QObject(&view), box_(box), view_(view), binding_(binding) {
  view.setUndoRedoEnabled(false);
  view.installEventFilter(this);
  view.viewport()->installEventFilter(this);
  QObject* receiver = binding.receiver();
  connect(view.document(), &QTextDocument::contentsChange, receiver,
          [this](int position, int removed, int added) { collect(position, removed, added); });
  connect(&view, &QPlainTextEdit::textChanged, receiver, [this] { postCollected(); });
  connect(&view, &QPlainTextEdit::cursorPositionChanged, receiver, [this] {
    if (showing_) return;
    scrolled_ = false;
    follows_ = false;
  });
  connect(view.verticalScrollBar(), &QScrollBar::actionTriggered, receiver, [this] {
    scrolled_ = true;
    follows_ = false;
  });
  show(0);
}

void TextPage::show(std::size_t kept) {
  const std::string& text = box_.text;
  if (std::exchange(entering_, false)) {
    shown_ = text.size();
    follows_ = false;
    return;
  }
  unseen_ = std::min(unseen_, kept);
  if (isHidden()) return;
  const QScopedValueRollback showing(showing_, true);
  follows_ = keepsToEnd();
  if (std::exchange(unseen_, kNone) < shown_) restart();
  append(std::string_view(text).substr(shown_));
  shown_ = text.size();
}

// By the program, and not with a window that is yet to come.
bool TextPage::isHidden() const {
  return view_.isHidden() && view_.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

void TextPage::catchUp() {
  if (unseen_ == kNone) return;
  show(unseen_);
  followEnd();
}

void TextPage::followEnd() {
  if (!follows_ || view_.textCursor().hasSelection()) return;
  const QScopedValueRollback showing(showing_, true);
  if (!view_.textCursor().atEnd()) view_.moveCursor(QTextCursor::End);
  QScrollBar* bar = view_.verticalScrollBar();
  bar->setValue(bar->maximum());
}

bool TextPage::keepsToEnd() const {
  if (!isAtEnd()) return false;
  const QTextCursor caret = view_.textCursor();
  return !caret.hasSelection() && (caret.atEnd() || scrolled_ || !view_.hasFocus());
}

bool TextPage::isAtEnd() const {
  const QScrollBar* bar = view_.verticalScrollBar();
  return bar->value() >= bar->maximum();
}

void TextPage::restart() {
  view_.clear();
  cut_.clear();
  shown_ = 0;
  follows_ = true;
  ++life_;
  waiting_ = 0;
  collected_.clear();
  history_.clear();
}

void TextPage::append(std::string_view added) {
  if (added.empty()) return;
  cut_ += added;
  const std::size_t whole = wholePart(cut_);
  const QString text = onScreen(std::string_view(cut_).substr(0, whole));
  cut_.erase(0, whole);
  const QTextCursor own = view_.textCursor();
  const int anchor = own.anchor();
  const int caret = own.position();
  QTextCursor end = endOf(*view_.document());
  const bool pushes = anchor != caret && std::max(anchor, caret) == end.position();
  end.insertText(text);
  if (pushes) select(anchor, caret);
}

// A selection up to the end of the text has grown with the text and is put back, without
// bringing it into view.
void TextPage::select(int anchor, int caret) {
  QScrollBar* bar = view_.verticalScrollBar();
  const int place = bar->value();
  QTextCursor selection(view_.document());
  selection.setPosition(anchor);
  selection.setPosition(caret, QTextCursor::KeepAnchor);
  view_.setTextCursor(selection);
  bar->setValue(place);
}

// Qt counts the end of the document as a letter when all of the text is replaced. The
// document is in the middle of its change here, so that this goes on its way later.
void TextPage::collect(int position, int removed, int added) {
  if (showing_) return;
  QTextDocument& document = *view_.document();
  const int beyond = std::max(0, position + added - (document.characterCount() - 1));
  const QTextBlock block = document.findBlock(position);
  QTextCursor changed(&document);
  changed.setPosition(position);
  changed.setPosition(position + added - beyond, QTextCursor::KeepAnchor);
  collected_.push_back({{block.blockNumber(), position - block.position()},
                        position,
                        removed - beyond,
                        changed.selectedText(),
                        !std::exchange(undoing_, false),
                        life_});
}

void TextPage::postCollected() {
  const std::vector<Typed> changes = std::exchange(collected_, {});
  waiting_ += static_cast<int>(changes.size());
  for (const Typed& typed : changes) {
    binding_.post([page = QPointer<TextPage>(this), typed] {
      if (page) page->deliver(typed);
    });
  }
}

// A box that takes no typing is shown as it is. Its routine may take the window away.
void TextPage::deliver(const Typed& typed) {
  if (typed.life != life_) return;
  --waiting_;
  const QPointer<TextPage> alive(this);
  if (enter(typed) || !alive) return;
  const QScopedValueRollback showing(showing_, true);
  restart();
  show(0);
}

// The box tells that its text has changed before its routine runs, which may take in the
// next change.
bool TextPage::enter(const Typed& typed) {
  const std::string_view text = box_.text.get();
  ByteRange place = bytesAt(text, typed.place, typed.removed);
  const QString before = onScreen(text.substr(place.begin, place.length));
  std::string added = offScreen(typed.added);
  const QString after = onScreen(added);
  if (before == after) return true;
  if (typed.isNew) history_.note({typed.position, before, after});
  if (added.empty()) added = keepApart(text, typed.place, place);
  const QPointer<TextPage> alive(this);
  entering_ = true;
  const bool taken = box_.edit(place.begin, place.length, added);
  if (alive) entering_ = false;
  return taken;
}

bool TextPage::eventFilter(QObject* target, QEvent* event) {
  if (event->type() == QEvent::Show && target == &view_) catchUp();
  if (event->type() == QEvent::KeyPress) return pressKey(static_cast<QKeyEvent&>(*event));
  if (event->type() != QEvent::ContextMenu) return false;
  showMenu(static_cast<QContextMenuEvent*>(event)->globalPos());
  return true;
}

// A line ends in one way only.
bool TextPage::pressKey(const QKeyEvent& key) {
  if (key.matches(QKeySequence::Undo)) {
    carryOut(waiting_ == 0 ? history_.undo() : std::nullopt);
  } else if (key.matches(QKeySequence::Redo)) {
    carryOut(waiting_ == 0 ? history_.redo() : std::nullopt);
  } else if (key.matches(QKeySequence::InsertLineSeparator)) {
    view_.insertPlainText(QStringLiteral("\n"));
  } else {
    return false;
  }
  return true;
}

void TextPage::carryOut(const std::optional<TextEdit>& edit) {
  if (!edit) return;
  const QPointer<TextPage> alive(this);
  QTextCursor cursor(view_.document());
  cursor.setPosition(edit->position);
  cursor.setPosition(edit->position + static_cast<int>(edit->removed.size()),
                     QTextCursor::KeepAnchor);
  undoing_ = true;
  cursor.insertText(edit->added);
  if (!alive) return;
  undoing_ = false;
  cursor.clearSelection();
  view_.setTextCursor(cursor);
}

// The widget's own menu, in which undoing is that of this page.
void TextPage::showMenu(const QPoint& place) {
  QMenu* menu = view_.createStandardContextMenu();
  const auto take = [this, menu](const char* name, bool possible, auto step) {
    auto* action = menu->findChild<QAction*>(QLatin1String(name));
    if (action == nullptr) return;
    action->disconnect();
    action->setEnabled(possible && waiting_ == 0);
    connect(action, &QAction::triggered, this, [this, step] { carryOut((history_.*step)()); });
  };
  take("edit-undo", history_.canUndo(), &TextHistory::undo);
  take("edit-redo", history_.canRedo(), &TextHistory::redo);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->popup(place);
}

}  // namespace veltrin
