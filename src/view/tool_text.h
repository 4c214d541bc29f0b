// SPDX-License-Identifier: GPL-3.0-or-later
// How the console tools' text is shown.
#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>

namespace veltrin {

// What the tools print, in letters of one width, so that the tools' columns stand. The
// user may write into it.
class ToolText : public QPlainTextEdit {
 public:
  explicit ToolText(QWidget* parent = nullptr);
};

// The same in a box of few lines, with no room lost around them.
class ToolLines : public ToolText {
 public:
  explicit ToolLines(QWidget* parent = nullptr);
};

// A command that runs, in the same letters.
class ToolCommand : public QLineEdit {
 public:
  explicit ToolCommand(QWidget* parent = nullptr);
};

// A paragraph that explains something, on the window's own ground, which hides what is behind.
class Paragraph : public QPlainTextEdit {
 public:
  explicit Paragraph(QWidget* parent = nullptr);
};

}  // namespace veltrin
