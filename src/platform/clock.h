// SPDX-License-Identifier: GPL-3.0-or-later
// The calendar and the time of day.
#pragma once

#include <string>

#include "text/date_time.h"

namespace veltrin {

class Clock {
 public:
  virtual ~Clock() = default;

  // The present moment of the local calendar.
  virtual DateTime now() const = 0;

  // The present time of day in the user's short form ("15:22" or "3:22 PM").
  virtual std::string shortTime() const = 0;
};

}  // namespace veltrin
