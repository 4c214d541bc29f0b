// Controls in which the user types: text boxes and combo boxes.
#include <memory>
#include <optional>
#include <utility>

#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QStringDecoder>

#include "platform/qt/qt_text.h"
#include "text/strings.h"
#include "view/binding.h"

namespace veltrin {
namespace {

// Calls a routine for the events of a widget that it picks. Lives as long as the widget.
class Watcher : public QObject {
 public:
  using Picks = bool (*)(const QEvent&);

  Watcher(QWidget& widget, Picks picks, std::function<void()> routine)
      : QObject(&widget), picks_(picks), routine_(std::move(routine)) {
    widget.installEventFilter(this);
  }

  void release() { routine_ = {}; }

  // The routine is called on a copy, as it may be taken away meanwhile.
  bool eventFilter(QObject*, QEvent* event) override {
    const auto routine = picks_(*event) ? routine_ : nullptr;
    if (routine) routine();
    return false;
  }

 private:
  Picks picks_;
  std::function<void()> routine_;
};

void watch(QWidget& widget, Watcher::Picks picks, Binding& binding,
           const std::function<void()>& action) {
  auto* watcher = new Watcher(widget, picks, [&binding, action] { binding.post(action); });
  QObject::connect(binding.receiver(), &QObject::destroyed, watcher,
                   [watcher] { watcher->release(); });
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

void bindLine(TextBox& box, QLineEdit& line, Binding& binding) {
  const auto show = [&box, &line] {
    const QString text = toQt(box.text.get());
    if (line.text() != text) line.setText(text);
  };
  box.text.observe([show](std::size_t) { show(); });
  show();
  QObject::connect(&line, &QLineEdit::textEdited, binding.receiver(),
                   [&box, &binding](const QString& typed) {
                     binding.post([&box, text = fromQt(typed)] { box.enter(text); });
                   });
  watch(line, isDoubleClick, binding, [&box] { box.doubleClick(); });
}

// Shows a text of many lines. What is added is appended, so that its cost does not grow
// with the text; a character or line break that is cut by the end waits for its rest.
class Page {
 public:
  explicit Page(QPlainTextEdit& view) : view_(view) {}

  // `kept` leading bytes of `text` are shown already when nothing else was shown since;
  // all of it is when the user typed it here.
  void show(const std::string& text, std::size_t kept) {
    const auto typed = std::exchange(typed_, std::nullopt);
    if (typed == text) return;
    const QSignalBlocker quiet(view_);
    if (kept != shown_ || kept == 0) restart();
    append(std::string_view(text).substr(shown_));
    shown_ = text.size();
    view_.moveCursor(QTextCursor::End);
  }

  // What the user made of the text, with the program's line breaks.
  std::string takeTyped() {
    const QString lineBreak = QString::fromLatin1(kLineBreak.data(), kLineBreak.size());
    typed_ = fromQt(view_.toPlainText().replace('\n', lineBreak));
    forget();
    shown_ = typed_->size();
    return *typed_;
  }

 private:
  void restart() {
    view_.clear();
    forget();
    shown_ = 0;
  }

  void forget() {
    decoder_ = QStringDecoder(QStringDecoder::Utf8);
    cut_ = false;
  }

  void append(std::string_view added) {
    const QString decoded =
        decoder_.decode(QByteArrayView(added.data(), static_cast<qsizetype>(added.size())));
    QString text = (cut_ ? QStringLiteral("\r") : QString()) + decoded;
    cut_ = text.endsWith('\r');
    if (cut_) text.chop(1);
    QTextCursor end(view_.document());
    end.movePosition(QTextCursor::End);
    end.insertText(text);
  }

  QPlainTextEdit& view_;
  QStringDecoder decoder_{QStringDecoder::Utf8};
  std::size_t shown_ = 0;             // bytes of the text that are on the screen
  bool cut_ = false;                  // the text ends in half a line break
  std::optional<std::string> typed_;  // on its way from the screen to the control
};

void bindPage(TextBox& box, QPlainTextEdit& view, Binding& binding) {
  if (view.isReadOnly()) view.setUndoRedoEnabled(false);
  const auto page = std::make_shared<Page>(view);
  box.text.observe([&box, page](std::size_t kept) { page->show(box.text, kept); });
  page->show(box.text, 0);
  QObject::connect(&view, &QPlainTextEdit::textChanged, binding.receiver(), [&box, &binding, page] {
    binding.post([&box, text = page->takeTyped()] { box.enter(text); });
  });
  watch(*view.viewport(), isDoubleClick, binding, [&box] { box.doubleClick(); });
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
  binding.atEnd([&box] { box.text.observe({}); });
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
  watch(*view, isLeaving, binding, [&box] { box.leave(); });
}

}  // namespace veltrin
