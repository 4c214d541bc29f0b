// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a Trace Route in its shown window, into which the user types.
#pragma once

#include <memory>
#include <string>

#include <QApplication>
#include <QPlainTextEdit>

#include "route/trace.h"
#include "view_test.h"

namespace veltrin {

class TextPageTest : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    form = shown<trace>();
    page = widget<QPlainTextEdit>("txtOutputs");
    page->setFocus();
  }

  // Prints as a tool does.
  void print(const std::string& chunk) {
    form->txtOutputs.text += chunk;
    events.DoEvents();
  }

  // Puts the caret before a letter of the text on the screen.
  void caretTo(int position) {
    QTextCursor caret = page->textCursor();
    caret.setPosition(position);
    page->setTextCursor(caret);
  }

  void press(Qt::Key key, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(window->windowHandle(), key, with);
  }

  // Presses a button whose routine shows a message, and answers that.
  void pressAndAnswer(CommandButton& button) {
    atRest([&] {
      events.gate().post([&] {
        soon([] {
          QTest::keyClick(QApplication::activeModalWidget()->windowHandle(), Qt::Key_Return);
        });
        button.press();
      });
    });
  }

  const std::string& text() const { return form->txtOutputs.text; }
  std::string onPage() const { return fromQt(page->toPlainText()); }

  std::shared_ptr<trace> form;
  QPlainTextEdit* page = nullptr;
};

}  // namespace veltrin
