#include "view/form_window.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>

namespace veltrin {

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (closing_) closing_();
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    QWidget::keyPressEvent(event);
    return;
  }
  for (QPushButton* button : findChildren<QPushButton*>()) {
    if (!button->isDefault() || !button->isVisible()) continue;
    button->click();
    return;
  }
}

}  // namespace veltrin
