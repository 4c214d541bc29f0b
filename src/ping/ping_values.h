// SPDX-License-Identifier: GPL-3.0-or-later
// What the tools that ping share.
#pragma once

#include <cstddef>
#include <cstdint>

#include "text/loose.h"

namespace veltrin {

// The last reading of a ping, and the run of the Ping Test. One for the whole program, so
// that only one tool that pings may run at a time.
struct PingValues {
  Loose PingTime;    // milliseconds; 99999 for no reply
  Loose PingPasses;  // the text of the passes at the start of the run
  int PingPassNo = 0;
  int PingStop = 0;  // 1 when the run is to end
  int PingRow = 0;
  double PingSum = 0;
  std::size_t PingItem = 0;
  std::int32_t PingFailStatus = 0;  // of the last echo that failed, below 0
};

}  // namespace veltrin
