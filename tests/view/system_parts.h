// SPDX-License-Identifier: GPL-3.0-or-later
// What windows on the screen need of the system that the tests run on: its child processes,
// in whose silence a test's event loop sleeps, and its timers.
#pragma once

#include "platform/qt/qt_event_loop.h"
#include "platform/qt/silent_wait.h"
#ifdef _WIN32
#include "platform/windows/windows_processes.h"
#include "platform/windows/windows_waitable_timers.h"
#else
#include "platform/linux/linux_processes.h"
#include "platform/qt/qt_waitable_timers.h"
#endif

namespace veltrin {

#ifdef _WIN32
class SystemProcesses : public WindowsProcesses {
 public:
  explicit SystemProcesses(QtEventLoop& events)
      : WindowsProcesses([&events](void* event) { sleepUntilSignalled(events, event); }) {}
};

class SystemTimers : public WindowsWaitableTimers {
 public:
  explicit SystemTimers(QtEventLoop& events) : WindowsWaitableTimers(events.gate()) {}
};
#else
class SystemProcesses : public LinuxProcesses {
 public:
  explicit SystemProcesses(QtEventLoop& events)
      : LinuxProcesses("", [&events](int pipe) { sleepUntilReadable(events, pipe); }) {}
};

using SystemTimers = QtWaitableTimers;
#endif

}  // namespace veltrin
