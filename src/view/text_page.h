// A text of many lines on the screen.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <QPlainTextEdit>
#include <QStringDecoder>

namespace veltrin {

// What is added to the text is appended, so that its cost does not grow with the text; a
// character or line break that is cut by the end waits for its rest.
class TextPage {
 public:
  // `view` has to live longer.
  explicit TextPage(QPlainTextEdit& view) : view_(view) {}

  // `kept` leading bytes of `text` are shown already when nothing else was shown since;
  // all of it is when the user typed it here.
  void show(const std::string& text, std::size_t kept);

  // Brings the end of the text into view behind a change, unless the user looks at
  // something further up or holds a selection.
  void followEnd();

  // What the user made of the text, with the program's line breaks.
  std::string takeTyped();

 private:
  bool isAtEnd() const;
  void restart();
  void forget();
  void append(std::string_view added);
  void select(int anchor, int caret);

  QPlainTextEdit& view_;
  QStringDecoder decoder_{QStringDecoder::Utf8};
  std::size_t shown_ = 0;             // bytes of the text that are on the screen
  bool cut_ = false;                  // the text ends in half a line break
  bool wasAtEnd_ = true;              // the end was in view before the last change
  std::optional<std::string> typed_;  // on its way from the screen to the control
};

}  // namespace veltrin
