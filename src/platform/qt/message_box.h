// SPDX-License-Identifier: GPL-3.0-or-later
// A message to the user.
#pragma once

#include <string>

#include <QPointer>

class QMessageBox;

namespace veltrin {

// On the screen for its lifetime, before the program's front window, and the only one
// of the program that takes input until it is answered. Never waits by itself.
class MessageBox {
 public:
  // `style` is one of the desktop's.
  MessageBox(const std::string& text, int style, const std::string& title);
  ~MessageBox();
  MessageBox(const MessageBox&) = delete;
  MessageBox& operator=(const MessageBox&) = delete;

  bool isAnswered() const;

  // One of the desktop's answers. A box that was taken away counts as confirmed, and a
  // question as denied.
  int answer() const;

  // Takes the box off the screen.
  void close();

 private:
  QPointer<QMessageBox> box_;
  int unanswered_;
};

}  // namespace veltrin
