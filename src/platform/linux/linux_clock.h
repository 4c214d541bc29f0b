// SPDX-License-Identifier: GPL-3.0-or-later
// The calendar and the time of day on Linux.
#pragma once

#include <locale.h>
#include <string>
#include <string_view>

#include "platform/clock.h"

namespace veltrin {

// Tells the time in the zone and form of the user's environment (TZ, LC_TIME).
class LinuxClock : public Clock {
 public:
  // Reads the form once; the program's own locale is left alone.
  LinuxClock();
  ~LinuxClock() override;
  LinuxClock(const LinuxClock&) = delete;
  LinuxClock& operator=(const LinuxClock&) = delete;

  DateTime now() const override;
  std::string shortTime() const override;

 private:
  locale_t locale_;
  std::string pattern_;
};

// The pattern of a time of day without its seconds. `pattern` is that of the
// locale in the conversions of strftime, and `twelveHours` what its "%r" stands
// for. Hours of a twelve-hour clock lose their leading zero, a time zone is left
// out. "%H:%M" when no hours and minutes remain.
std::string withoutSeconds(std::string_view pattern, std::string_view twelveHours);

}  // namespace veltrin
