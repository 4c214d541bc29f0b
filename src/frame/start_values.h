// SPDX-License-Identifier: GPL-3.0-or-later
// What the start of the program finds out, and what the user set in its menu.
#pragma once

#include <string>

#include "frame/version.h"
#include "platform/counters.h"

namespace veltrin {

// Set by the splash window, WinDir by the collectors of the summary too; read by many
// windows.
struct StartValues {
  const std::string AppVersion = kVersion;
  const std::string AppDate = "5 Jan 2012";
  std::string HostName;
  std::string WinDir;
  std::string LocalIp;
  std::string PublicIp;          // as the update endpoint sees it; empty when it said nothing
  int UpdateWaiting = 0;         // 1 while the endpoint has not answered
  int PdhFailed = 0;             // 1 when there is no performance query
  Counters::Query PdhQuery = 0;  // open to the end of the program
};

// Set by the main menu.
struct MenuValues {
  std::string RatedSpeed;  // KB, without separators
  int PostVistaOs = 0;     // 1 on systems with fewer InDepth options
};

}  // namespace veltrin
