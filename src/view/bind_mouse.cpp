// SPDX-License-Identifier: GPL-3.0-or-later
// The mouse over controls, and over the window beside them.
#include <cmath>
#include <memory>
#include <utility>

#include <QFocusEvent>
#include <QMouseEvent>

#include "view/binding.h"
#include "view/watcher.h"

namespace veltrin {
namespace {

MouseButton buttonOf(Qt::MouseButtons buttons) {
  if (buttons & Qt::LeftButton) return MouseButton::Left;
  return buttons & Qt::RightButton ? MouseButton::Right : MouseButton::None;
}

// What is told of the mouse: the button, and the place in twips from the left edge.
using Taking = std::function<void(MouseButton button, int x)>;

// Routines of one control or window; those that it does not have are empty.
struct MouseRoutines {
  Taking down;
  Taking move;
  Taking up;
};

// By whole pixels of 100 percent, whatever the scale of the screen.
int twipsAt(const QMouseEvent& event) {
  constexpr int kTwipsOfPixel = 15;
  return static_cast<int>(std::floor(event.position().x())) * kTwipsOfPixel;
}

// The routines of a control or window that has some.
template <class Kind>
MouseRoutines routinesOf(Kind& target) {
  MouseRoutines routines;
  if (target.mouseDown) {
    routines.down = [&target](MouseButton button, int x) { target.pressMouse(button, x); };
  }
  if (target.mouseMove) {
    routines.move = [&target](MouseButton button, int x) { target.moveMouse(button, x); };
  }
  if (target.mouseUp) {
    routines.up = [&target](MouseButton button, int x) { target.releaseMouse(button, x); };
  }
  return routines;
}

bool isAny(const MouseRoutines& routines) { return routines.down || routines.move || routines.up; }

// Hands on what the mouse does. While a move waits at the gate, the next one takes its
// place, unless a button was pressed or released between them.
class MousePost {
 public:
  MousePost(Binding& binding, MouseRoutines routines)
      : binding_(binding), routines_(std::move(routines)) {}

  void take(const QMouseEvent& event) {
    switch (event.type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonDblClick:
        post(routines_.down, event);
        break;
      case QEvent::MouseButtonRelease:
        post(routines_.up, event);
        break;
      default:
        move(event);
    }
  }

 private:
  struct Move {
    bool waits = false;
    MouseButton held = MouseButton::None;
    int x = 0;
  };

  void post(const Taking& routine, const QMouseEvent& event) {
    move_ = std::make_shared<Move>();
    const MouseButton button = buttonOf(event.button());
    if (!routine || button == MouseButton::None) return;
    binding_.post([routine, button, x = twipsAt(event)] { routine(button, x); });
  }

  void move(const QMouseEvent& event) {
    if (!routines_.move) return;
    move_->held = buttonOf(event.buttons());
    move_->x = twipsAt(event);
    if (std::exchange(move_->waits, true)) return;
    binding_.post([routine = routines_.move, move = move_] {
      move->waits = false;
      routine(move->held, move->x);
    });
  }

  Binding& binding_;
  const MouseRoutines routines_;
  std::shared_ptr<Move> move_ = std::make_shared<Move>();  // the last one
};

bool isMouse(const QEvent& event) {
  return event.type() == QEvent::MouseMove || event.type() == QEvent::MouseButtonPress ||
         event.type() == QEvent::MouseButtonDblClick || event.type() == QEvent::MouseButtonRelease;
}

// The keyboard came from another control by the key Tab.
bool isTabbedTo(const QEvent& event) {
  if (event.type() != QEvent::FocusIn) return false;
  const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

bool isDecoration(const QWidget& widget) {
  return widget.objectName().startsWith(QLatin1String("decor"));
}

// Whether a place in the window lies beside all controls.
bool isBeside(const QWidget& window, const QPointF& place) {
  const QWidget* child = window.childAt(place.toPoint());
  return child == nullptr || isDecoration(*child);
}

// A button that went down over a control keeps the mouse for that control, and one that went
// down beside all of them for the window.
void watchWindow(QWidget& window, MouseRoutines routines, Binding& binding) {
  window.setMouseTracking(true);
  for (QWidget* child : window.findChildren<QWidget*>()) {
    if (isDecoration(*child)) child->setMouseTracking(true);
  }
  const auto post = std::make_shared<MousePost>(binding, std::move(routines));
  watch(window, binding, [&window, post, isOurs = false](const QEvent& event) mutable {
    if (!isMouse(event)) return;
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    const bool beside = isBeside(window, mouse.position());
    const bool isMove = event.type() == QEvent::MouseMove;
    const bool isRelease = event.type() == QEvent::MouseButtonRelease;
    if (!isMove && !isRelease) isOurs = beside;
    if (isMove && mouse.buttons() == Qt::NoButton ? beside : isOurs) post->take(mouse);
    if (isRelease) isOurs = false;
  });
}

// The keyboard opens what the right button opens. It moves a window without a frame.
void bindKeysOfMouse(Form& form, FormWindow& window, Binding& binding) {
  window.onMenu(
      [&form, &binding] { binding.post([&form] { form.pressMouse(MouseButton::Right); }); });
  if (window.windowFlags() & Qt::FramelessWindowHint) window.moveByKeys();
}

}  // namespace

void bindMouse(Control& control, QWidget& widget, Binding& binding) {
  MouseRoutines routines = routinesOf(control);
  if (!isAny(routines)) return;
  const auto post = std::make_shared<MousePost>(binding, std::move(routines));
  QList<QWidget*> parts = widget.findChildren<QWidget*>();
  parts.append(&widget);
  for (QWidget* part : parts) {
    if (control.mouseMove) part->setMouseTracking(true);
    watch(*part, binding, [post](const QEvent& event) {
      if (isMouse(event)) post->take(static_cast<const QMouseEvent&>(event));
    });
  }
  if (!control.mouseMove) return;
  watch(widget, binding, [&control, &binding](const QEvent& event) {
    if (isTabbedTo(event)) binding.post([&control] { control.moveMouse(MouseButton::None); });
  });
}

void bindClick(const std::function<bool(const QPointF&)>& isTarget, QWidget& widget,
               Binding& binding, const std::function<void()>& action) {
  watch(widget, binding, [&binding, action, isTarget, held = false](const QEvent& event) mutable {
    if (!isMouse(event) || event.type() == QEvent::MouseMove) return;
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    if (mouse.button() != Qt::LeftButton) return;
    const bool released = event.type() == QEvent::MouseButtonRelease;
    const bool clicked = released && held && isTarget(mouse.position());
    held = !released && isTarget(mouse.position());
    if (clicked) binding.post(action);
  });
}

void bindWindowMouse(Form& form, FormWindow& window, Binding& binding) {
  MouseRoutines routines = routinesOf(form);
  if (isAny(routines)) watchWindow(window, std::move(routines), binding);
  if (form.mouseDown) bindKeysOfMouse(form, window, binding);
  if (!form.click) return;
  const auto press = [&form] { form.press(); };
  bindClick([&window](const QPointF& place) { return isBeside(window, place); }, window, binding,
            press);
  window.onPress([&binding, press] { binding.post(press); });
}

}  // namespace veltrin
