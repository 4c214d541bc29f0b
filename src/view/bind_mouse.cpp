// The mouse over controls, and over the window beside them.
#include <memory>
#include <utility>

#include <QMouseEvent>

#include "view/binding.h"
#include "view/watcher.h"

namespace veltrin {
namespace {

MouseButton buttonOf(Qt::MouseButtons buttons) {
  if (buttons & Qt::LeftButton) return MouseButton::Left;
  return buttons & Qt::RightButton ? MouseButton::Right : MouseButton::None;
}

// Routines of one control or window; those that it does not have are empty.
struct MouseRoutines {
  MouseRoutine down;
  MouseRoutine move;
  MouseRoutine up;
};

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
        post(routines_.down, event.button());
        break;
      case QEvent::MouseButtonRelease:
        post(routines_.up, event.button());
        break;
      default:
        move(buttonOf(event.buttons()));
    }
  }

 private:
  struct Move {
    bool waits = false;
    MouseButton held = MouseButton::None;
  };

  void post(const MouseRoutine& routine, Qt::MouseButton pressed) {
    move_ = std::make_shared<Move>();
    const MouseButton button = buttonOf(pressed);
    if (!routine || button == MouseButton::None) return;
    binding_.post([routine, button] { routine(button); });
  }

  void move(MouseButton held) {
    if (!routines_.move) return;
    move_->held = held;
    if (std::exchange(move_->waits, true)) return;
    binding_.post([routine = routines_.move, move = move_] {
      move->waits = false;
      routine(move->held);
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

bool isDecoration(const QWidget& widget) {
  return widget.objectName().startsWith(QLatin1String("decor"));
}

// Whether a place in the window lies beside all controls.
bool isBeside(const QWidget& window, const QPointF& place) {
  const QWidget* child = window.childAt(place.toPoint());
  return child == nullptr || isDecoration(*child);
}

void bindWindowMove(Form& form, QWidget& window, Binding& binding) {
  window.setMouseTracking(true);
  for (QWidget* child : window.findChildren<QWidget*>()) {
    if (isDecoration(*child)) child->setMouseTracking(true);
  }
  const auto post = std::make_shared<MousePost>(
      binding, MouseRoutines{{}, [&form](MouseButton button) { form.moveMouse(button); }, {}});
  // A button that went down over a control keeps the mouse for that control.
  watch(window, binding, [&window, post, isFree = true](const QEvent& event) mutable {
    if (!isMouse(event)) return;
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    const bool beside = isBeside(window, mouse.position());
    if (event.type() != QEvent::MouseMove) {
      isFree = beside;
    } else if (beside && (isFree || mouse.buttons() == Qt::NoButton)) {
      post->take(mouse);
    }
  });
}

}  // namespace

void bindMouse(Control& control, QWidget& widget, Binding& binding) {
  MouseRoutines routines;
  if (control.mouseDown) {
    routines.down = [&control](MouseButton button) { control.pressMouse(button); };
  }
  if (control.mouseMove) {
    routines.move = [&control](MouseButton button) { control.moveMouse(button); };
  }
  if (control.mouseUp) {
    routines.up = [&control](MouseButton button) { control.releaseMouse(button); };
  }
  if (!routines.down && !routines.move && !routines.up) return;
  const auto post = std::make_shared<MousePost>(binding, std::move(routines));
  QList<QWidget*> parts = widget.findChildren<QWidget*>();
  parts.append(&widget);
  for (QWidget* part : parts) {
    if (control.mouseMove) part->setMouseTracking(true);
    watch(*part, binding, [post](const QEvent& event) {
      if (isMouse(event)) post->take(static_cast<const QMouseEvent&>(event));
    });
  }
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
  if (form.mouseMove) bindWindowMove(form, window, binding);
  if (!form.click) return;
  const auto press = [&form] { form.press(); };
  bindClick([&window](const QPointF& place) { return isBeside(window, place); }, window, binding,
            press);
  window.onPress([&binding, press] { binding.post(press); });
}

}  // namespace veltrin
