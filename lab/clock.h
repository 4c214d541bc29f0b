// SPDX-License-Identifier: GPL-3.0-or-later
// The lab's clock, which goes on whatever happens to the time of day.
#pragma once

#include <ctime>

#include "lab/behaviour.h"

namespace veltrin::lab {

// The time since some beginning; never runs backwards.
inline Time now() {
  timespec moment{};
  clock_gettime(CLOCK_MONOTONIC, &moment);
  return std::chrono::seconds(moment.tv_sec) + std::chrono::nanoseconds(moment.tv_nsec);
}

// A duration as calls of the system take it.
inline timespec timespecOf(Time duration) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(duration);
  timespec result{};
  result.tv_sec = static_cast<time_t>(seconds.count());
  result.tv_nsec = static_cast<long>((duration - seconds).count());
  return result;
}

}  // namespace veltrin::lab
