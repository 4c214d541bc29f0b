// SPDX-License-Identifier: GPL-3.0-or-later
// The child processes of the system, in whose silence a test's event loop sleeps.
#pragma once

#include "platform/qt/qt_event_loop.h"
#include "platform/qt/silent_wait.h"
#ifdef _WIN32
#include "platform/windows/windows_processes.h"
#else
#include "platform/linux/linux_processes.h"
#endif

namespace veltrin {

#ifdef _WIN32
class SystemProcesses : public WindowsProcesses {
 public:
  explicit SystemProcesses(QtEventLoop& events)
      : WindowsProcesses([&events](void* event) { sleepUntilSignalled(events, event); }) {}
};
#else
class SystemProcesses : public LinuxProcesses {
 public:
  explicit SystemProcesses(QtEventLoop& events)
      : LinuxProcesses("", [&events](int pipe) { sleepUntilReadable(events, pipe); }) {}
};
#endif

}  // namespace veltrin
