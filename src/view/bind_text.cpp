// Controls in which the user types: text boxes and combo boxes.
#include <memory>

#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>

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

void bindLine(TextBox& box, QLineEdit& line, Binding& binding) {
  const auto show = [&box, &line] {
    const QString text = toQt(box.text.get());
    if (line.text() != text) line.setText(text);
  };
  box.text.observe([show](std::size_t) { show(); });
  box.observeCaret([&line] { line.end(false); });
  show();
  QObject::connect(&line, &QLineEdit::textEdited, binding.receiver(),
                   [&box, &binding](const QString& typed) {
                     binding.post([&box, text = fromQt(typed)] { box.enter(text); });
                   });
  postOn(line, isDoubleClick, binding, [&box] { box.doubleClick(); });
}

void bindPage(TextBox& box, QPlainTextEdit& view, Binding& binding) {
  if (view.isReadOnly()) view.setUndoRedoEnabled(false);
  const auto page = std::make_shared<TextPage>(view);
  box.text.observe([&box, page](std::size_t kept) { page->show(box.text, kept); });
  box.observeCaret([page] { page->followEnd(); });
  page->show(box.text, 0);
  // A text that has grown before the window is shown meets its place only then.
  postOn(view, isShowing, binding, [page, shown = QPointer<QPlainTextEdit>(&view)] {
    if (shown) page->followEnd();
  });
  QObject::connect(&view, &QPlainTextEdit::textChanged, binding.receiver(), [&box, &binding, page] {
    binding.post([&box, text = page->takeTyped()] { box.enter(text); });
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

}  // namespace

void bindTextBox(TextBox& box, QWidget& widget, Binding& binding) {
  if (auto* line = qobject_cast<QLineEdit*>(&widget)) bindLine(box, *line, binding);
  if (auto* page = qobject_cast<QPlainTextEdit*>(&widget)) bindPage(box, *page, binding);
  binding.atEnd([&box] {
    box.text.observe({});
    box.observeCaret({});
  });
}

// The list offers, and nothing that was typed is changed into one of its texts.
void bindComboBox(ComboBox& box, QWidget& widget, Binding& binding) {
  auto* view = qobject_cast<QComboBox*>(&widget);
  if (view == nullptr) return;
  view->setEditable(true);
  view->setInsertPolicy(QComboBox::NoInsert);
  view->setCompleter(nullptr);
  binding.show(box.items, [&box, view](const auto&) { showItems(box, *view); });
  box.text.observe([&box, view](std::size_t) { showText(box, *view); });
  binding.atEnd([&box] { box.text.observe({}); });
  const auto enter = [&box, &binding](const QString& text) {
    binding.post([&box, typed = fromQt(text)] { box.enter(typed); });
  };
  QObject::connect(view->lineEdit(), &QLineEdit::textEdited, binding.receiver(), enter);
  QObject::connect(view, &QComboBox::textActivated, binding.receiver(), enter);
  postOn(*view, isLeaving, binding, [&box] { box.leave(); });
}

}  // namespace veltrin
