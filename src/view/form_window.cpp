#include "view/form_window.h"

#include <algorithm>

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

#include "platform/qt/window_state.h"

namespace veltrin {
namespace {

constexpr double kEdge = 1;        // pixels around a window without a frame
constexpr int kTwipsOfPixel = 15;  // at 100 percent

}  // namespace

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (closing_ && !property(kUnclosableProperty).toBool()) closing_();
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (isEnter) {
    for (QPushButton* button : findChildren<QPushButton*>()) {
      if (!button->isDefault() || !button->isVisible()) continue;
      button->click();
      return;
    }
  }
  if (pressing_ && (isEnter || key == Qt::Key_Space || key == Qt::Key_Escape)) {
    const auto routine = pressing_;  // it may take itself away
    routine();
  } else if (!isEnter) {
    QWidget::keyPressEvent(event);
  }
}

// A window becomes modal by coming to the screen a second time; what it came up from may
// have lost the front by then.
void FormWindow::noteOpener() {
  QWidget* front = QApplication::activeWindow();
  if (front != nullptr && front != this) opener_ = front;
  if (isModal() && opener_ && opener_->isVisible()) {
    windowHandle()->setTransientParent(opener_->windowHandle());
  }
}

void FormWindow::showHeight(int twips) {
  if (twips <= 0) return;
  setFixedSize(width(), (twips - property(kFrameProperty).toInt()) / kTwipsOfPixel);
  giveKeyboardToWhatIsSeen();
  keepOnScreen();
}

void FormWindow::giveKeyboardToWhatIsSeen() {
  for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    const bool isSeen = child->y() < height();
    const auto found = unseen_.find(child);
    if (!isSeen && found == unseen_.end()) {
      unseen_[child] = child->focusPolicy();
      child->setFocusPolicy(Qt::NoFocus);
    } else if (isSeen && found != unseen_.end()) {
      child->setFocusPolicy(found->second);
      unseen_.erase(found);
    }
  }
  if (unseen_.contains(focusWidget())) focusNextChild();
}

// A window that has grown past the lower edge of its screen goes up.
void FormWindow::keepOnScreen() {
  if (!isVisible()) return;
  const QRect room = screen()->availableGeometry();
  const int beyond = frameGeometry().bottom() - room.bottom();
  const int free = frameGeometry().top() - room.top();
  if (beyond > 0 && free > 0) move(x(), frameGeometry().top() - std::min(beyond, free));
}

void FormWindow::showEvent(QShowEvent*) {
  noteOpener();
  if (!(windowFlags() & Qt::FramelessWindowHint)) return;
  const QRect room = screen()->availableGeometry();
  move(room.center() - rect().center());
}

void FormWindow::paintEvent(QPaintEvent*) {
  if (!(windowFlags() & Qt::FramelessWindowHint)) return;
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Dark));
  painter.drawRect(QRectF(rect()).adjusted(kEdge / 2, kEdge / 2, -kEdge / 2, -kEdge / 2));
}

}  // namespace veltrin
