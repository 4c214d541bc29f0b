// SPDX-License-Identifier: GPL-3.0-or-later
// The event loop of the program with windows.
#pragma once

#include <cstdint>

#include <QTimer>

#include "platform/event_loop.h"
#include "platform/qt/held_input.h"
#include "platform/qt/light_sleep.h"

namespace veltrin {

// Lets Qt take in what the system has. While a routine waits, windows are painted
// and the window system is answered, and everything else waits at the gate.
class QtEventLoop : public EventLoop {
 public:
  // Needs the application object.
  QtEventLoop();

  // The resting main loop: delivers everything until the program has ended.
  void run();

  // Sleeps until something comes in, whether or not anything waits at the gate, and
  // takes it in with the gate as it is.
  void sleep();

  std::int64_t milliseconds() const override;

 protected:
  void pump() override;
  void waitForEvent() override;

 private:
  void arm();
  void tick();

  HeldInput held_;
  LightSleep sleep_;
  QTimer due_;  // single shot, at the next tick of the timers
};

}  // namespace veltrin
