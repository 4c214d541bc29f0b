// SPDX-License-Identifier: GPL-3.0-or-later
// Routines that are called from the event loop.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

namespace veltrin {

// Calls routines on its own thread, in their order, once that thread is back in its event
// loop. What waits when it is destroyed is dropped; a routine may destroy it.
class Later : public QObject {
 public:
  // May be called on any thread.
  void call(std::function<void()> routine) {
    QCoreApplication::postEvent(this, std::make_unique<Call>(std::move(routine)).release());
  }

 protected:
  void customEvent(QEvent* event) override {
    const auto routine = std::move(static_cast<Call*>(event)->routine);
    routine();
  }

 private:
  struct Call : QEvent {
    explicit Call(std::function<void()> toCall) : QEvent(User), routine(std::move(toCall)) {}
    std::function<void()> routine;
  };
};

}  // namespace veltrin
