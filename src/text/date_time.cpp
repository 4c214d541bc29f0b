// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/date_time.h"

#include <array>
#include <chrono>
#include <cstdio>

#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::array<std::string_view, 12> kShortMonths = {
    "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::string padded(int value, int places) {
  char buffer[16];
  const int length = std::snprintf(buffer, sizeof buffer, "%0*d", places, value);
  return std::string(buffer, static_cast<std::size_t>(length));
}

std::string shortMonth(int month) {
  if (month < 1 || month > static_cast<int>(kShortMonths.size())) return {};
  return std::string(kShortMonths[static_cast<std::size_t>(month - 1)]);
}

std::chrono::sys_days daysOf(const DateTime& moment) {
  return std::chrono::year_month_day{std::chrono::year(moment.year),
                                     std::chrono::month(static_cast<unsigned>(moment.month)),
                                     std::chrono::day(static_cast<unsigned>(moment.day))};
}

// From 1 on the first of January.
std::int64_t dayOfYear(const DateTime& moment) {
  return (daysOf(moment) - daysOf({.year = moment.year})).count() + 1;
}

}  // namespace

double secondsSinceMidnight(const DateTime& moment) {
  const int seconds = (moment.hour * 60 + moment.minute) * 60 + moment.second;
  // One division of a whole number, so that the result is the nearest to its decimals.
  return (seconds * 1000 + moment.millisecond) / 1000.0;
}

std::int64_t wholeSeconds(const DateTime& start, const DateTime& end) {
  const auto secondsOf = [](const DateTime& moment) {
    const auto clock = std::chrono::hours(moment.hour) + std::chrono::minutes(moment.minute) +
                       std::chrono::seconds(moment.second);
    return std::chrono::seconds(daysOf(moment).time_since_epoch() + clock).count();
  };
  return secondsOf(end) - secondsOf(start);
}

std::string Format(const DateTime& moment, std::string_view pattern) {
  const std::string wanted = LCase(pattern);
  std::string text;
  bool behindHour = false;
  for (std::size_t at = 0; at < wanted.size();) {
    const std::string_view rest = std::string_view(wanted).substr(at);
    const auto take = [&](std::string_view mark, const std::string& value) {
      if (!rest.starts_with(mark)) return false;
      text += value;
      at += mark.size();
      return true;
    };
    const bool minutes = behindHour;
    behindHour = false;
    if (take("yyyy", padded(moment.year, 4)) || take("yy", padded(moment.year % 100, 2)) ||
        take("y", std::to_string(dayOfYear(moment))) || take("mmm", shortMonth(moment.month)) ||
        take("dd", padded(moment.day, 2)) || take("nn", padded(moment.minute, 2)) ||
        take("ss", padded(moment.second, 2)) ||
        take("mm", padded(minutes ? moment.minute : moment.month, 2))) {
      continue;
    }
    if (take("hh", padded(moment.hour, 2))) {
      behindHour = true;
      continue;
    }
    text += pattern[at++];
    behindHour = minutes;
  }
  return text;
}

}  // namespace veltrin
