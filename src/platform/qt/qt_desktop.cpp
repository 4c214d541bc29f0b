// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/qt_desktop.h"

#include <utility>

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QMenu>
#include <QScreen>
#include <QWindow>

#include "platform/qt/message_box.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/window_state.h"

namespace veltrin {
namespace {

bool isTitled(const QWidget& window) {
  return window.isVisible() && !window.windowTitle().isEmpty() &&
         (window.windowType() == Qt::Window || window.windowType() == Qt::Dialog);
}

}  // namespace

QtDesktop::QtDesktop(EventLoop& events, const Files& files, std::string applicationTitle,
                     FormLooks looks)
    : events_(events),
      files_(files),
      applicationTitle_(std::move(applicationTitle)),
      looks_(std::move(looks)),
      titles_(makeTitleBoard(applicationTitle_)),
      borders_(makeBorderPen()) {}

// No event loop is left that would delete what waits for that.
QtDesktop::~QtDesktop() {
  for (const auto& [form, look] : shown_) removed_.emplace_back(&look->window());
  shown_.clear();
  for (const QPointer<QWidget>& window : removed_) delete window.data();
}

void QtDesktop::show(Form& form) {
  QWidget* window = makeWindowOf(form);
  if (window == nullptr) return;
  if (window->isMinimized()) window->showNormal();
  window->show();
  window->raise();
  window->activateWindow();
  publishTitles();
}

void QtDesktop::hide(Form& form) {
  if (QWidget* window = windowOf(form)) window->hide();
  publishTitles();
}

void QtDesktop::remove(Form& form) {
  const auto found = shown_.find(&form);
  if (found == shown_.end()) return;
  std::erase_if(removed_, [](const QPointer<QWidget>& window) { return window.isNull(); });
  removed_.emplace_back(&found->second->window());
  shown_.erase(found);
  publishTitles();
}

// A window takes on being modal only when it comes to the screen: one that is there already
// has to go for a moment.
void QtDesktop::makeModal(Form& form) {
  QWidget* window = makeWindowOf(form);
  if (window == nullptr) return;
  if (!window->isModal()) {
    window->hide();
    window->setWindowModality(Qt::ApplicationModal);
  }
  show(form);
}

void QtDesktop::popupMenu(Form& form, const std::vector<MenuEntry*>& entries,
                          const MenuEntry* defaultEntry) {
  QWidget* const window = windowOf(form);
  if (window == nullptr) return;
  QMenu menu(window);
  MenuEntry* chosen = nullptr;
  for (MenuEntry* const entry : entries) {
    QAction* const action = menu.addAction(toQt(entry->caption.get()));
    action->setEnabled(entry->enabled);
    action->setVisible(entry->visible);
    QObject::connect(action, &QAction::triggered, &menu, [&chosen, entry] { chosen = entry; });
    if (entry == defaultEntry) menu.setDefaultAction(action);
  }
  const bool isMouseThere = window->frameGeometry().contains(QCursor::pos());
  const QPoint place = isMouseThere ? QCursor::pos() : window->frameGeometry().center();
  menu.popup(place - QPoint(menu.sizeHint().width(), 0));
  events_.pumpUntil([&menu] { return !menu.isVisible(); });
  if (chosen != nullptr) chosen->press();
}

int QtDesktop::messageBox(const std::string& text, int style, const std::string& title) {
  MessageBox box(text, style, title.empty() ? applicationTitle_ : title);
  publishTitles();
  events_.pumpUntil([&box] { return box.isAnswered(); });
  box.close();
  publishTitles();
  return box.answer();
}

void QtDesktop::clearClipboard() { QApplication::clipboard()->clear(); }

void QtDesktop::setClipboardText(const std::string& text) {
  QApplication::clipboard()->setText(toQt(text));
}

void QtDesktop::setApplicationTitle(const std::string& title) {
  applicationTitle_ = title;
  titles_->setApplicationTitle(title);
}

std::uint32_t QtDesktop::findWindow(const std::string& title) { return titles_->find(title); }

void QtDesktop::setMenuBackground(Form& form, Colour colour) {
  if (QWidget* window = makeWindowOf(form)) veltrin::setMenuBackground(*window, colour);
}

void QtDesktop::setTopmost(Form& form, bool topmost) {
  if (QWidget* window = makeWindowOf(form)) veltrin::setTopmost(*window, topmost);
}

void QtDesktop::removeFromSystemMenu(Form& form, int entry, int flags) {
  if (QWidget* window = makeWindowOf(form)) veltrin::removeFromSystemMenu(*window, entry, flags);
}

ScreenPoint QtDesktop::cursorPosition() const { return veltrin::cursorPosition(); }

ScreenRectangle QtDesktop::windowRectangle(const Form& form) const {
  const QWidget* window = windowOf(form);
  return window == nullptr ? ScreenRectangle() : veltrin::windowRectangle(*window);
}

void QtDesktop::moveWindow(Form& form, const ScreenRectangle& place) {
  if (QWidget* window = windowOf(form)) veltrin::moveWindow(*window, place);
}

void QtDesktop::placeBeside(Form& form, const Form& other, int right, int below) {
  const QWidget* there = windowOf(other);
  if (there == nullptr) return;
  QWidget* window = makeWindowOf(form);
  if (window == nullptr) return;
  constexpr double kTwipsOfPixel = 15;  // at 100 percent
  const QPoint away(qRound(right / kTwipsOfPixel), qRound(below / kTwipsOfPixel));
  const QRect place(there->frameGeometry().topLeft() + away, window->frameGeometry().size());
  window->move(cornerWithin(there->screen()->availableGeometry(), place));
}

void QtDesktop::drawFocusRectangle(const ScreenRectangle& border) { borders_->draw(border); }

bool QtDesktop::moveBySystem(Form& form) {
  QWidget* window = windowOf(form);
  if (window == nullptr || !isPlacedBySystem()) return false;
  return window->windowHandle() != nullptr && window->windowHandle()->startSystemMove();
}

QWidget* QtDesktop::windowOf(const Form& form) const {
  const auto found = shown_.find(&form);
  return found == shown_.end() ? nullptr : &found->second->window();
}

QWidget* QtDesktop::makeWindowOf(Form& form) {
  if (QWidget* window = windowOf(form)) return window;
  auto look = looks_(form, events_.gate(), files_);
  if (look == nullptr) return nullptr;
  QWidget* window = &look->window();
  QObject::connect(window, &QWidget::windowTitleChanged, window, [this] { publishTitles(); });
  shown_[&form] = std::move(look);
  return window;
}

void QtDesktop::publishTitles() {
  std::vector<std::string> titles;
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    if (isTitled(*window)) titles.push_back(fromQt(window->windowTitle()));
  }
  titles_->setWindowTitles(std::move(titles));
}

}  // namespace veltrin
