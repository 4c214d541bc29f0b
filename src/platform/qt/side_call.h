// SPDX-License-Identifier: GPL-3.0-or-later
// Calls of the system that may never return, made beside the program's own thread.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/qt/qt_event_loop.h"

namespace veltrin {

// One call on a thread of its own. Neither the going of this object nor the end of the
// program waits for it: `work` owns what it writes to, and throws nothing.
class SideCall {
 public:
  // Starts at once. Throws StatementFailed when the system has no thread to give.
  explicit SideCall(std::function<void()> work);

  // Sleeps until the call has returned, at most for that time. Windows are painted and the
  // window system is answered meanwhile; the gate stays as it is, and so no routine runs.
  // Returns whether it has returned; what it wrote may be read then.
  bool wait(QtEventLoop& events, std::chrono::milliseconds longest);

 private:
  struct State;

  std::shared_ptr<State> state_;  // shared with the thread
};

}  // namespace veltrin
