// SPDX-License-Identifier: GPL-3.0-or-later
// The calendar and the time of day on Windows.
#pragma once

#include <string>

#include "platform/clock.h"

namespace veltrin {

// Tells the time in the zone and form of the user's settings.
class WindowsClock : public Clock {
 public:
  DateTime now() const override;
  std::string shortTime() const override;
};

}  // namespace veltrin
