// SPDX-License-Identifier: GPL-3.0-or-later
// The event loop of a Windows program without a toolkit.
#pragma once

#include <cstdint>

#include "platform/event_loop.h"

namespace veltrin {

// Takes the thread's messages from the system and the ticks from the schedule. A
// WM_QUIT ends the program.
class MessageLoop : public EventLoop {
 public:
  // Milliseconds since the system was started.
  std::int64_t milliseconds() const override;

 protected:
  void pump() override;

  // Asleep until a message comes in or a tick falls due.
  void waitForEvent() override;
};

}  // namespace veltrin
