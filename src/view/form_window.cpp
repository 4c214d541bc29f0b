#include "view/form_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

namespace veltrin {
namespace {

constexpr double kEdge = 1;  // pixels around a window without a frame

}  // namespace

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (closing_) closing_();
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
