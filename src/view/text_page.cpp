#include "view/text_page.h"

#include <algorithm>
#include <utility>

#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextCursor>

#include "platform/qt/qt_text.h"
#include "text/strings.h"

namespace veltrin {

void TextPage::show(const std::string& text, std::size_t kept) {
  const auto typed = std::exchange(typed_, std::nullopt);
  if (typed == text) return;
  const QSignalBlocker quiet(view_);
  wasAtEnd_ = isAtEnd();
  if (kept != shown_ || kept == 0) restart();
  append(std::string_view(text).substr(shown_));
  shown_ = text.size();
}

void TextPage::followEnd() {
  if (!wasAtEnd_ || view_.textCursor().hasSelection()) return;
  if (!view_.textCursor().atEnd()) view_.moveCursor(QTextCursor::End);
  QScrollBar* bar = view_.verticalScrollBar();
  bar->setValue(bar->maximum());
}

std::string TextPage::takeTyped() {
  const QString lineBreak = QString::fromLatin1(kLineBreak.data(), kLineBreak.size());
  typed_ = fromQt(view_.toPlainText().replace('\n', lineBreak));
  forget();
  shown_ = typed_->size();
  return *typed_;
}

bool TextPage::isAtEnd() const {
  const QScrollBar* bar = view_.verticalScrollBar();
  return bar->value() >= bar->maximum();
}

void TextPage::restart() {
  view_.clear();
  forget();
  shown_ = 0;
  wasAtEnd_ = true;
}

void TextPage::forget() {
  decoder_ = QStringDecoder(QStringDecoder::Utf8);
  cut_ = false;
}

void TextPage::append(std::string_view added) {
  const QString decoded =
      decoder_.decode(QByteArrayView(added.data(), static_cast<qsizetype>(added.size())));
  QString text = (cut_ ? QStringLiteral("\r") : QString()) + decoded;
  cut_ = text.endsWith('\r');
  if (cut_) text.chop(1);
  const QTextCursor own = view_.textCursor();
  const int anchor = own.anchor();
  const int caret = own.position();
  QTextCursor end(view_.document());
  end.movePosition(QTextCursor::End);
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

}  // namespace veltrin
