// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps what the user does while the event gate is closed, and hands it on when it opens.
#pragma once

#include <deque>
#include <functional>
#include <memory>

#include <QEvent>
#include <QObject>
#include <QPointer>

#include "platform/event_gate.h"

namespace veltrin {

// Watches everything that the window system sends to the program's windows. While
// the gate is closed, keys, mouse buttons, wheels, input methods and the frame's
// close button wait here in their order; what is dragged over a window is refused, and
// so are touches and pens, which then come as mouse buttons.
// Painting, sizes and the answers to the window system go on. What is aimed at a
// window that has gone, is hidden, or is blocked by a modal one is dropped on delivery.
class HeldInput : public QObject {
 public:
  // Needs the application object. `gate` has to live longer.
  explicit HeldInput(EventGate& gate);
  ~HeldInput() override;
  HeldInput(const HeldInput&) = delete;
  HeldInput& operator=(const HeldInput&) = delete;

  // Hands on what waits until nothing is left or the gate is closed again. Nested
  // calls go on with the rest.
  void deliver();

  // Number of events that wait.
  std::size_t count() const { return held_.size(); }

  bool eventFilter(QObject* target, QEvent* event) override;

 protected:
  void customEvent(QEvent* event) override;

 private:
  struct Held {
    QPointer<QObject> target;
    QEvent::Type type = QEvent::None;
    std::function<std::unique_ptr<QEvent>()> make;  // for the moment of delivery
  };

  void hold(QObject* target, const QEvent& event);
  void send(const Held& held);
  void remindOfRest();

  EventGate& gate_;
  std::deque<Held> held_;
  bool sending_ = false;  // what comes to the filter is due to what is being handed on
  bool reminded_ = false;
};

}  // namespace veltrin
