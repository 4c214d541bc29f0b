// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/message_box.h"

#include <array>
#include <utility>

#include <QApplication>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QWindow>

#include "platform/desktop.h"
#include "platform/qt/qt_text.h"

namespace veltrin {
namespace {

// A style is one number for the buttons and one for the picture.
constexpr int kButtons = 0x0f;
constexpr int kPicture = 0xf0;

QMessageBox::Icon pictureOf(int style) {
  switch (style & kPicture) {
    case kMessageCritical:
      return QMessageBox::Critical;
    case kMessageWarning:
      return QMessageBox::Warning;
    default:
      return QMessageBox::NoIcon;
  }
}

bool isQuestion(int style) { return (style & kButtons) == kMessageYesNo; }

// Blank lines at the end of a text only make the box higher.
QString shownText(const std::string& text) {
  QString shown = toQt(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  qsizetype end = shown.size();
  while (end > 0 && shown.at(end - 1).isSpace()) --end;
  const qsizetype blankLines = shown.indexOf(QLatin1Char('\n'), end);
  return blankLines < 0 ? shown : shown.left(blankLines);
}

constexpr int kMargin = 16;  // pixels around the text and the buttons

// Without a picture the box keeps a place of that width free.
int leftMargin(const QMessageBox& box) { return box.icon() == QMessageBox::NoIcon ? 0 : kMargin; }

// The question is English on any desktop, and so are its answers and their keys.
void nameButtons(const QMessageBox& box) {
  constexpr std::array<std::pair<QMessageBox::StandardButton, const char*>, 3> kNames{
      {{QMessageBox::Yes, "&Yes"}, {QMessageBox::No, "&No"}, {QMessageBox::Ok, "OK"}}};
  for (const auto& [button, name] : kNames) {
    if (auto* const shown = box.button(button)) shown->setText(name);
  }
}

// Over the middle of the window in front of which it stands, which may go before it.
void place(QMessageBox& box, const QWidget* front) {
  if (front == nullptr || front->windowHandle() == nullptr) return;
  box.winId();
  box.windowHandle()->setTransientParent(front->windowHandle());
  box.adjustSize();
  QRect frame(QPoint(), box.size());
  frame.moveCenter(front->frameGeometry().center());
  box.move(frame.topLeft());
}

}  // namespace

MessageBox::MessageBox(const std::string& text, int style, const std::string& title)
    : box_(new QMessageBox), unanswered_(isQuestion(style) ? kAnswerNo : kAnswerOk) {
  const QWidget* front = QApplication::activeWindow();
  box_->setWindowModality(Qt::ApplicationModal);
  box_->setTextFormat(Qt::PlainText);
  box_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  box_->setIcon(pictureOf(style));
  box_->setWindowTitle(toQt(title));
  box_->setText(shownText(text));
  box_->setStandardButtons(isQuestion(style) ? QMessageBox::Yes | QMessageBox::No
                                             : QMessageBox::Ok);
  nameButtons(*box_);
  box_->setDefaultButton(isQuestion(style) ? QMessageBox::Yes : QMessageBox::Ok);
  box_->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                       Qt::WindowCloseButtonHint);
  box_->layout()->setContentsMargins(leftMargin(*box_), kMargin, kMargin, kMargin);
  place(*box_, front);
  box_->show();
  if ((style & kMessageToForeground) == 0) return;
  box_->raise();
  box_->activateWindow();
}

MessageBox::~MessageBox() { delete box_.data(); }

bool MessageBox::isAnswered() const { return !box_ || !box_->isVisible(); }

int MessageBox::answer() const {
  if (!box_ || box_->clickedButton() == nullptr) return unanswered_;
  switch (box_->standardButton(box_->clickedButton())) {
    case QMessageBox::Yes:
      return kAnswerYes;
    case QMessageBox::No:
      return kAnswerNo;
    default:
      return kAnswerOk;
  }
}

void MessageBox::close() {
  if (box_) box_->hide();
}

}  // namespace veltrin
