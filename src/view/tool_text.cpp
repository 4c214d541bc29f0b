#include "view/tool_text.h"

#include <QTextDocument>

#include "view/appearance.h"

namespace veltrin {
namespace {

constexpr double kTextMargin = 6;  // pixels

// On the ground of the window, in the ink of its hints.
QPalette quietPalette(QPalette palette) {
  palette.setColor(QPalette::Base, Qt::transparent);
  palette.setColor(QPalette::Text, palette.color(QPalette::PlaceholderText));
  return palette;
}

}  // namespace

ToolText::ToolText(QWidget* parent) : QPlainTextEdit(parent) {
  setFont(fixedLetters());
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  document()->setDocumentMargin(kTextMargin);
}

ToolCommand::ToolCommand(QWidget* parent) : QLineEdit(parent) {
  setFont(fixedLetters());
  setReadOnly(true);
  setFrame(false);
  setFocusPolicy(Qt::ClickFocus);
  setPalette(quietPalette(palette()));
}

Paragraph::Paragraph(QWidget* parent) : QPlainTextEdit(parent) {
  setReadOnly(true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setPalette(quietPalette(palette()));
  document()->setDocumentMargin(0);
}

}  // namespace veltrin
