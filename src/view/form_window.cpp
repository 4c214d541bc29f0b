// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/form_window.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QWindow>

#include "platform/qt/window_state.h"

namespace veltrin {
namespace {

constexpr double kEdge = 1;        // pixels around a window without a frame
constexpr int kTwipsOfPixel = 15;  // at 100 percent
constexpr int kStep = 10;          // pixels that an arrow key moves a window

// Windows makes a wish for the menu of Shift and F10 by itself.
bool isMenuKey(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Escape) return true;
#ifdef Q_OS_WIN
  return false;
#else
  return event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier;
#endif
}

bool isEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

}  // namespace

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (closing_ && !property(kUnclosableProperty).toBool()) closing_();
}

// Presses the button that the key stands for; false when there is none.
bool FormWindow::pressButton(int key) {
  for (QPushButton* button : findChildren<QPushButton*>()) {
    const bool isMeant = (isEnter(key) && button->isDefault()) ||
                         (key == Qt::Key_Escape && button->property(kCancelProperty).toBool());
    if (!isMeant || !button->isVisible()) continue;
    button->click();
    return true;
  }
  return false;
}

// Opens the first menu of the window's bar; false when the key is another or there is no bar.
bool FormWindow::openMenuBar(const QKeyEvent& event) {
  auto* bar = findChild<QMenuBar*>();
  if (event.key() != Qt::Key_F10 || event.modifiers() != Qt::NoModifier || bar == nullptr) {
    return false;
  }
  for (QAction* action : bar->actions()) {
    if (!action->isVisible() || !action->isEnabled()) continue;
    bar->setActiveAction(action);
    return true;
  }
  return false;
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (pressButton(key) || openMenuBar(*event)) return;
  if (opening_ && isMenuKey(*event)) {
    const auto routine = opening_;  // it may take itself away
    routine();
    return;
  }
  if (pressing_ && (isEnter(key) || key == Qt::Key_Space || key == Qt::Key_Escape)) {
    const auto routine = pressing_;  // it may take itself away
    routine();
  } else if (!isEnter(key)) {
    QWidget::keyPressEvent(event);
  }
}

// The system makes this of its menu key.
void FormWindow::contextMenuEvent(QContextMenuEvent* event) {
  if (!opening_ || event->reason() != QContextMenuEvent::Keyboard) {
    QWidget::contextMenuEvent(event);
    return;
  }
  const auto routine = opening_;
  routine();
}

void FormWindow::moveByKeys() {
  const std::map<Qt::Key, QPoint> steps = {{Qt::Key_Left, {-kStep, 0}},
                                           {Qt::Key_Right, {kStep, 0}},
                                           {Qt::Key_Up, {0, -kStep}},
                                           {Qt::Key_Down, {0, kStep}}};
  for (const auto& [key, step] : steps) {
    auto* shortcut = new QShortcut(key, this);
    connect(shortcut, &QShortcut::activated, this, [this, step = step] {
      move(cornerWithin(screen()->availableGeometry(), frameGeometry().translated(step)));
    });
  }
}

// While one window gives the front to another, none may have it: one that is in sight then
// stands for it.
QWidget* FormWindow::findOpener() const {
  for (QWidget* window : {QApplication::activeWindow(), QApplication::activeModalWidget()}) {
    if (window != nullptr && window != this) return window;
  }
  if (opener_ && opener_->isVisible()) return opener_;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const bool isForms = dynamic_cast<FormWindow*>(window) != nullptr;
    if (isForms && window != this && window->isVisible()) return window;
  }
  return nullptr;
}

// A window that was shown before becomes modal by coming to the screen a second time; what
// it came up from may have lost the front by then.
void FormWindow::noteOpener() {
  opener_ = findOpener();
  if (!isModal() || !opener_) return;
  windowHandle()->setTransientParent(opener_->windowHandle());
  if (!std::exchange(standsOver_, true)) standOver(*opener_);
}

// In the middle of a window, as far as the screen goes, in a frame like that one's.
void FormWindow::standOver(const QWidget& window) {
  const QRect inside = window.geometry();
  const QRect outside = window.frameGeometry();
  QRect place(QPoint(), size() + outside.size() - inside.size());
  place.moveCenter(outside.center());
  move(cornerWithin(window.screen()->availableGeometry(), place));
}

void FormWindow::showHeight(int twips) {
  if (twips <= 0) return;
  setFixedSize(width(), (twips - property(kFrameProperty).toInt()) / kTwipsOfPixel);
  giveKeyboardToWhatIsSeen();
  keepOnScreen();
}

QSize FormWindow::insideOf(const QSize& twips) const {
  return {(twips.width() - property(kFrameWidthProperty).toInt()) / kTwipsOfPixel,
          (twips.height() - property(kFrameProperty).toInt()) / kTwipsOfPixel};
}

QSize FormWindow::twipsOf(const QSize& inside) const {
  return {inside.width() * kTwipsOfPixel + property(kFrameWidthProperty).toInt(),
          inside.height() * kTwipsOfPixel + property(kFrameProperty).toInt()};
}

void FormWindow::showSize(const QSize& twips) {
  if (!isMaximized() && !isFullScreen()) resize(insideOf(twips));
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

// Windows places what opens without regard to the right edge of a small screen.
void FormWindow::comeOntoScreen() {
  const QPoint corner = cornerWithin(screen()->availableGeometry(), frameGeometry());
  if (isVisible() && corner != frameGeometry().topLeft()) move(corner);
}

void FormWindow::showEvent(QShowEvent* event) {
  if (event->spontaneous()) return;
  noteOpener();
  if (!(windowFlags() & Qt::FramelessWindowHint)) {
    // Its place and its frame are known when the system has made them.
    QMetaObject::invokeMethod(this, &FormWindow::comeOntoScreen, Qt::QueuedConnection);
    return;
  }
  if (testAttribute(Qt::WA_Moved)) return;
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
