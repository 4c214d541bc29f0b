// SPDX-License-Identifier: GPL-3.0-or-later
// Everything that the operating system supplies, as one bundle of interfaces.
#pragma once

#include <string>

#include "platform/clock.h"
#include "platform/counters.h"
#include "platform/desktop.h"
#include "platform/downloads.h"
#include "platform/drives.h"
#include "platform/environment.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/icmp.h"
#include "platform/interface_table.h"
#include "platform/printers.h"
#include "platform/process_list.h"
#include "platform/processes.h"
#include "platform/profile_store.h"
#include "platform/registry.h"
#include "platform/shell.h"
#include "platform/sockets.h"
#include "platform/waitable_timers.h"
#include "platform/wmi.h"

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
  Shell& shell;
  Environment& environment;
  Sockets& sockets;
  Counters& counters;
  Wmi& wmi;
  Icmp& icmp;
  Downloads& downloads;
  InterfaceTable& interfaces;
  Printers& printers;
  Drives& drives;
  ProcessList& processList;

  // The program's file name without folder and ending.
  std::string executableName;
};

}  // namespace veltrin
