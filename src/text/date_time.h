// SPDX-License-Identifier: GPL-3.0-or-later
// A date with a time of day, and the patterns in which the program prints it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veltrin {

// A moment of the local calendar.
struct DateTime {
  int year = 1970;
  int month = 1;        // 1 to 12
  int day = 1;          // 1 to 31
  int hour = 0;         // 0 to 23
  int minute = 0;       // 0 to 59
  int second = 0;       // 0 to 59
  int millisecond = 0;  // 0 to 999
};

// Seconds since midnight with their parts, 0 to 86399.999: what starts at 0 again
// in the night.
double secondsSinceMidnight(const DateTime& moment);

// Seconds from one moment to another, each without its part of a second; negative when
// the end lies before the start.
std::int64_t wholeSeconds(const DateTime& start, const DateTime& end);

// Prints a moment by a pattern. "dd", "mmm" (English short name), "yyyy", "yy", "y"
// (the day of the year, from 1), "hh", "nn" and "ss" are replaced in any case; "mm" directly
// behind "hh" means minutes, elsewhere the month. Everything else stands as it is.
std::string Format(const DateTime& moment, std::string_view pattern);

}  // namespace veltrin
