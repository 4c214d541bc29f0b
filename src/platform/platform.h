// Everything that the operating system supplies, as one bundle of interfaces.
#pragma once

#include <string>

#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/processes.h"
#include "platform/profile_store.h"
#include "platform/registry.h"
#include "platform/waitable_timers.h"

namespace veltrin {

struct Platform {
  EventLoop& events;
  WaitableTimers& timers;
  Clock& clock;
  Desktop& desktop;
  Files& files;
  Processes& processes;
  ProfileStore& profiles;
  Registry& registry;

  // The program's file name without folder and ending.
  std::string executableName;
};

}  // namespace veltrin
