// SPDX-License-Identifier: GPL-3.0-or-later
// Controls in which the user types: text boxes and combo boxes.
#include <memory>
#include <string>
#include <utility>

#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>
#include <QStandardItemModel>

#include "platform/qt/qt_text.h"
#include "view/binding.h"
#include "view/text_page.h"
#include "view/watcher.h"

namespace veltrin {
namespace {

using Picks = bool (*)(const QEvent&);

// Posts an action for the events of a widget that are picked.
void postOn(QWidget& widget, Picks picks, Binding& binding, const std::function<void()>& action) {
  watch(widget, binding, [&binding, picks, action](const QEvent& event) {
    if (picks(event)) binding.post(action);
  });
}

bool isDoubleClick(const QEvent& event) {
  return event.type() == QEvent::MouseButtonDblClick &&
         static_cast<const QMouseEvent&>(event).button() == Qt::LeftButton;
}

// The keyboard went to another control, not to a popup or another program.
bool isLeaving(const QEvent& event) {
  if (event.type() != QEvent::FocusOut) return false;
  const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
  return reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason &&
         reason != Qt::ActiveWindowFocusReason;
}

bool isShowing(const QEvent& event) { return event.type() == QEvent::Show; }

// A text of one line. What was typed into a text that the program has replaced before it
// came through the gate is void.
class Line {
 public:
  Line(TextBox& box, QLineEdit& view) : box_(box), view_(&view) {}

  void show() {
    if (std::exchange(entering_, false)) return;
    ++life_;
    const QString text = toQt(box_.text.get());
    if (view_ && view_->text() != text) view_->setText(text);
  }

  // A box that takes no typing is shown as it is.
  void enter(const std::string& typed, int life) {
    if (life != life_) return;
    entering_ = true;
    box_.enter(typed);
    if (std::exchange(entering_, false) && box_.text.get() != typed) show();
  }

  int life() const { return life_; }

 private:
  TextBox& box_;
  QPointer<QLineEdit> view_;
  int life_ = 0;           // counts the texts that the program has set
  bool entering_ = false;  // the change of the box under way is on the screen already
};

void bindLine(TextBox& box, QLineEdit& view, Binding& binding) {
  const auto line = std::make_shared<Line>(box, view);
  box.text.observe([line](std::size_t) { line->show(); });
  box.observeCaret([&view] { view.end(false); });
  line->show();
  QObject::connect(
      &view, &QLineEdit::textEdited, binding.receiver(), [&binding, line](const QString& typed) {
        binding.post(
            [line, life = line->life(), text = fromQt(typed)] { line->enter(text, life); });
      });
  postOn(view, isDoubleClick, binding, [&box] { box.doubleClick(); });
}

// The page goes with its widget, which outlives the binding.
void bindPage(TextBox& box, QPlainTextEdit& view, Binding& binding) {
  auto* page = new TextPage(box, view, binding);
  box.text.observe([page](std::size_t kept) { page->show(kept); });
  box.observeCaret([page] { page->followEnd(); });
  // A text that has grown before the window is shown meets its place only then.
  postOn(view, isShowing, binding, [shown = QPointer<TextPage>(page)] {
    if (shown) shown->followEnd();
  });
  postOn(*view.viewport(), isDoubleClick, binding, [&box] { box.doubleClick(); });
}

void showText(const ComboBox& box, QComboBox& view) {
  const QString text = toQt(box.text.get());
  if (view.lineEdit()->text() == text) return;
  view.setCurrentIndex(view.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
  view.setEditText(text);
}

void showItems(const ComboBox& box, QComboBox& view) {
  view.clear();
  for (const std::string& item : box.items.get()) view.addItem(toQt(item));
  view.setCurrentIndex(-1);
  view.clearEditText();
  showText(box, view);
}

// A text that is none of the items stands behind them, where nobody can pick it.
void showOther(const QString& text, QComboBox& view) {
  const int place = view.count();
  view.addItem(text);
  if (auto* rows = qobject_cast<QStandardItemModel*>(view.model())) {
    rows->item(place)->setFlags(Qt::NoItemFlags);
  }
  if (auto* list = qobject_cast<QListView*>(view.view())) list->setRowHidden(place, true);
}

// An empty text is no choice.
void showPicked(const ComboBox& box, QComboBox& view) {
  const int items = static_cast<int>(box.items.get().size());
  const QString text = toQt(box.text.get());
  if (view.currentText() == text) return;
  view.setCurrentIndex(-1);
  while (view.count() > items) view.removeItem(items);
  if (text.isEmpty()) return;
  if (view.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0) showOther(text, view);
  view.setCurrentIndex(view.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
}

// What is too long for the list is read in a tip.
void showPicks(const ComboBox& box, QComboBox& view) {
  view.clear();
  for (const std::string& item : box.items.get()) {
    const QString text = toQt(item);
    view.addItem(text);
    view.setItemData(view.count() - 1, QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped()),
                     Qt::ToolTipRole);
  }
  view.setCurrentIndex(-1);
  showPicked(box, view);
}

void bindPicks(ComboBox& box, QComboBox& view, Binding& binding) {
  view.setEditable(false);
  binding.show(box.items, [&box, &view](const auto&) { showPicks(box, view); });
  box.text.observe([&box, &view](std::size_t) { showPicked(box, view); });
  QObject::connect(&view, &QComboBox::textActivated, binding.receiver(),
                   [&box, &binding, shown = QPointer<QComboBox>(&view)](const QString& text) {
                     binding.post([&box, shown, picked = fromQt(text)] {
                       box.enter(picked);
                       if (shown) showPicked(box, *shown);
                     });
                   });
}

// The list offers, and nothing that was typed is changed into one of its texts.
void bindTyping(ComboBox& box, QComboBox& view, Binding& binding) {
  view.setEditable(true);
  view.setInsertPolicy(QComboBox::NoInsert);
  view.setCompleter(nullptr);
  binding.show(box.items, [&box, &view](const auto&) { showItems(box, view); });
  box.text.observe([&box, &view](std::size_t) { showText(box, view); });
  const auto enter = [&box, &binding](const QString& text) {
    binding.post([&box, typed = fromQt(text)] { box.enter(typed); });
  };
  QObject::connect(view.lineEdit(), &QLineEdit::textEdited, binding.receiver(), enter);
  QObject::connect(&view, &QComboBox::textActivated, binding.receiver(), enter);
}

}  // namespace

void bindTextBox(TextBox& box, QWidget& widget, Binding& binding) {
  if (auto* line = qobject_cast<QLineEdit*>(&widget)) bindLine(box, *line, binding);
  if (auto* page = qobject_cast<QPlainTextEdit*>(&widget)) bindPage(box, *page, binding);
  binding.atEnd([&box] {
    box.text.observe({});
    box.observeCaret({});
  });
}

void bindComboBox(ComboBox& box, QWidget& widget, Binding& binding) {
  auto* view = qobject_cast<QComboBox*>(&widget);
  if (view == nullptr) return;
  if (box.pickOnly) {
    bindPicks(box, *view, binding);
  } else {
    bindTyping(box, *view, binding);
  }
  binding.atEnd([&box] { box.text.observe({}); });
  postOn(*view, isLeaving, binding, [&box] { box.leave(); });
}

}  // namespace veltrin
