#include "platform/qt/held_input.h"

#include <utility>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QWindow>

namespace veltrin {
namespace {

enum class Treatment { Pass, Hold, Accept, Refuse };

// Popups close as part of their own work, only frames have a close button.
bool hasFrame(const QObject* target) {
  const Qt::WindowType type = static_cast<const QWindow*>(target)->type();
  return type == Qt::Window || type == Qt::Dialog;
}

// What is to happen with an event at a window while the gate is closed.
Treatment treatmentAtWindow(const QObject* target, QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::TabletMove:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
      return Treatment::Hold;
    case QEvent::Close:
      return hasFrame(target) ? Treatment::Hold : Treatment::Pass;
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
      return Treatment::Refuse;
    default:
      return Treatment::Pass;
  }
}

// Input methods talk to the focused widget itself. A shortcut is claimed as if the
// focused widget wanted the key, so that it comes as a key press and waits.
Treatment treatment(const QObject* target, QEvent::Type type) {
  if (type == QEvent::ShortcutOverride) return Treatment::Accept;
  if (type == QEvent::InputMethod) return Treatment::Hold;
  return target->isWindowType() ? treatmentAtWindow(target, type) : Treatment::Pass;
}

// Whether a window may take input: it is on the screen, and no modal window that it
// does not belong to stands before it.
bool takesInput(const QWindow& window) {
  if (!window.isVisible()) return false;
  const QWindow* modal = QGuiApplication::modalWindow();
  if (modal == nullptr) return true;
  const QWindow* ancestor = &window;
  while (ancestor != nullptr && ancestor != modal) {
    ancestor = ancestor->parent(QWindow::IncludeTransients);
  }
  return ancestor == modal;
}

}  // namespace

// A routine that closed the gate may return without an opening: the rest of what was
// held is then due before the program goes to sleep.
HeldInput::HeldInput(EventGate& gate) : gate_(gate) {
  QCoreApplication::instance()->installEventFilter(this);
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
          [this] { remindOfRest(); });
}

HeldInput::~HeldInput() = default;

bool HeldInput::eventFilter(QObject* target, QEvent* event) {
  if (event == sent_ || (event->type() == QEvent::Close && target == closed_)) return false;
  const Treatment how = treatment(target, event->type());
  if (how == Treatment::Pass) return false;
  const QPointer<QObject> alive(target);
  deliver();
  if (!alive) return true;
  if (gate_.isOpen()) return false;
  event->setAccepted(how != Treatment::Refuse && event->type() != QEvent::Close);
  if (how == Treatment::Hold) hold(target, event);
  return true;
}

// Only the last of several moves matters.
void HeldInput::hold(QObject* target, QEvent* event) {
  if (event->type() == QEvent::MouseMove && !held_.empty() && held_.back().target == target &&
      held_.back().event->type() == QEvent::MouseMove) {
    held_.pop_back();
  }
  held_.push_back({target, std::unique_ptr<QEvent>(event->clone())});
}

void HeldInput::deliver() {
  while (gate_.isOpen() && !gate_.hasEnded() && !held_.empty()) {
    const Held next = std::move(held_.front());
    held_.pop_front();
    if (next.target) send(next);
  }
}

void HeldInput::send(const Held& held) {
  if (held.target->isWindowType() && !takesInput(static_cast<const QWindow&>(*held.target))) return;
  if (held.event->type() == QEvent::Close) {
    const QObject* before = std::exchange(closed_, held.target.data());
    static_cast<QWindow*>(held.target.data())->close();
    closed_ = before;
    return;
  }
  const QEvent* before = std::exchange(sent_, held.event.get());
  QCoreApplication::sendEvent(held.target, held.event.get());
  sent_ = before;
}

// A posted event wakes the dispatcher that is about to sleep.
void HeldInput::remindOfRest() {
  if (reminded_ || held_.empty() || !gate_.isOpen()) return;
  reminded_ = true;
  QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void HeldInput::customEvent(QEvent*) {
  reminded_ = false;
  deliver();
}

}  // namespace veltrin
