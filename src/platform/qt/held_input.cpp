// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/held_input.h"

#include <utility>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWheelEvent>
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
      return Treatment::Hold;
    case QEvent::Close:
      return hasFrame(target) ? Treatment::Hold : Treatment::Pass;
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::TabletMove:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
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

using Maker = std::function<std::unique_ptr<QEvent>()>;

// Events of the mouse share their point with the device, which moves on: they are made
// anew when they are delivered, from values.
Maker makerOfMouse(const QMouseEvent& event) {
  return [type = event.type(), place = event.position(), global = event.globalPosition(),
          button = event.button(), buttons = event.buttons(), modifiers = event.modifiers(),
          device = event.pointingDevice(), time = event.timestamp()] {
    auto made = std::make_unique<QMouseEvent>(type, place, place, global, button, buttons,
                                              modifiers, device);
    made->setTimestamp(time);
    return made;
  };
}

Maker makerOfWheel(const QWheelEvent& event) {
  return [place = event.position(), global = event.globalPosition(), pixels = event.pixelDelta(),
          angle = event.angleDelta(), buttons = event.buttons(), modifiers = event.modifiers(),
          phase = event.phase(), inverted = event.inverted(), time = event.timestamp()] {
    auto made = std::make_unique<QWheelEvent>(place, global, pixels, angle, buttons, modifiers,
                                              phase, inverted);
    made->setTimestamp(time);
    return made;
  };
}

Maker makerOf(const QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
      return makerOfMouse(static_cast<const QMouseEvent&>(event));
    case QEvent::Wheel:
      return makerOfWheel(static_cast<const QWheelEvent&>(event));
    default:
      return [copy = std::shared_ptr<QEvent>(event.clone())] {
        return std::unique_ptr<QEvent>(copy->clone());
      };
  }
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
  const Treatment how = treatment(target, event->type());
  if (how == Treatment::Pass || (sending_ && gate_.isOpen())) return false;
  const QPointer<QObject> alive(target);
  deliver();
  if (!alive) return true;
  if (gate_.isOpen()) return false;
  event->setAccepted(how != Treatment::Refuse && event->type() != QEvent::Close);
  if (how == Treatment::Hold) hold(target, *event);
  return true;
}

// Only the last of several moves matters.
void HeldInput::hold(QObject* target, const QEvent& event) {
  if (event.type() == QEvent::MouseMove && !held_.empty() && held_.back().target == target &&
      held_.back().type == QEvent::MouseMove) {
    held_.pop_back();
  }
  Held& held = held_.emplace_back();
  held.target = target;
  held.type = event.type();
  held.make = makerOf(event);
}

// Whoever comes here while something is being handed on is a routine that pumps: what
// comes in from then on is fresh.
void HeldInput::deliver() {
  sending_ = false;
  while (gate_.isOpen() && !gate_.hasEnded() && !held_.empty()) {
    const Held next = std::move(held_.front());
    held_.pop_front();
    if (!next.target) continue;
    sending_ = true;
    send(next);
    sending_ = false;
  }
}

void HeldInput::send(const Held& held) {
  if (held.target->isWindowType() && !takesInput(static_cast<const QWindow&>(*held.target))) return;
  if (held.type == QEvent::Close) {
    static_cast<QWindow*>(held.target.data())->close();
    return;
  }
  const auto event = held.make();
  QCoreApplication::sendEvent(held.target, event.get());
}

// A posted event wakes the dispatcher that is about to sleep.
void HeldInput::remindOfRest() {
  if (reminded_ || held_.empty() || !gate_.isOpen()) return;
  reminded_ = true;
  QCoreApplication::postEvent(this, std::make_unique<QEvent>(QEvent::User).release());
}

void HeldInput::customEvent(QEvent*) {
  reminded_ = false;
  deliver();
}

}  // namespace veltrin
