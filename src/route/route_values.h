// SPDX-License-Identifier: GPL-3.0-or-later
// What the route tools share. One of each for the whole program, so that only one of the
// tools may run at a time.
#pragma once

#include <functional>
#include <string>

#include "text/loose.h"

namespace veltrin {

// The passes of a run, which all route tools count by one counter.
struct RouteValues {
  Loose RoutePasses;  // their text at the start of the run
  int RoutePass = 0;  // as the last loop left it
};

// The run of an InDepth analysis.
struct InDepthValues {
  int InDepthRunning = 0;      // 1 while a test runs
  double InDepthStart = 0;     // of that test, in seconds since midnight
  std::string InDepthOptions;  // arguments of pathping, but the destination

  // The last item of the list of silent hops, as text, from the window that keeps the
  // list; empty while no such window is loaded.
  std::function<std::string()> lastBadHop;
};

}  // namespace veltrin
