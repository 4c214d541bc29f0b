// SPDX-License-Identifier: GPL-3.0-or-later
// What a run of the Hop Stability Test leaves behind when its window has gone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "text/loose.h"

namespace veltrin {

// A run sets what it needs; the rest stays from the run before, also of another window.
struct StabilityValues {
  int ParseMode = 0;         // 1: reply times are read from what ping prints
  Loose Total;               // of four reply times, then their mean, then the hops
  int SilentHops = 0;        // of the trace
  std::size_t HopIndex = 0;  // of the hop under test, from 0
  int PingCount = 0;         // to that hop, from 1
  int Estimate = 0;          // of the run, in seconds
  int Elapsed = 0;           // seconds that were counted
  double Low = 0;            // lowest and highest time, then the count of such replies
  double High = 0;
  std::string HopAverage;       // ms; empty for one that rounds to 0
  std::int32_t GraphValue = 0;  // the last reply time, ms
};

}  // namespace veltrin
