// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/tool_text.h"

#include <QTextDocument>

#include "view/appearance.h"

namespace veltrin {
namespace {

constexpr double kTextMargin = 6;  // pixels
constexpr double kLinesMargin = 2;

}  // namespace

ToolText::ToolText(QWidget* parent) : QPlainTextEdit(parent) {
  setFont(fixedLetters());
  setTabChangesFocus(true);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  document()->setDocumentMargin(kTextMargin);
}

ToolLines::ToolLines(QWidget* parent) : ToolText(parent) {
  document()->setDocumentMargin(kLinesMargin);
}

// A command that is too long shows its beginning, unless somebody works in it.
ToolCommand::ToolCommand(QWidget* parent) : QLineEdit(parent) {
  setFont(fixedLetters());
  connect(this, &QLineEdit::textChanged, this, [this] {
    if (!hasFocus()) home(false);
  });
}

Paragraph::Paragraph(QWidget* parent) : QPlainTextEdit(parent) {
  setTabChangesFocus(true);
  QPalette quiet = palette();
  quiet.setColor(QPalette::Base, quiet.color(QPalette::Window));
  quiet.setColor(QPalette::Text, quiet.color(QPalette::PlaceholderText));
  setPalette(quiet);
  document()->setDocumentMargin(kTextMargin - 2);
}

}  // namespace veltrin
