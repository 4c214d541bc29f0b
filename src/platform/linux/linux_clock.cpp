// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_clock.h"

#include <array>
#include <cstddef>
#include <ctime>
#include <langinfo.h>
#include <locale.h>

namespace veltrin {
namespace {

constexpr std::string_view kPlainPattern = "%H:%M";

constexpr long kNanosecondsInMillisecond = 1'000'000;

std::timespec currentTime() {
  std::timespec time{};
  clock_gettime(CLOCK_REALTIME, &time);
  return time;
}

std::tm localTime(std::time_t seconds) {
  std::tm parts{};
  localtime_r(&seconds, &parts);
  return parts;
}

void replaceAll(std::string& text, std::string_view wanted, std::string_view by) {
  for (auto at = text.find(wanted); at != std::string::npos; at = text.find(wanted, at)) {
    text.replace(at, wanted.size(), by);
    at += by.size();
  }
}

// Takes every `conversion` away together with the separator in front of it.
void removeWithSeparator(std::string& pattern, std::string_view conversion) {
  for (auto at = pattern.find(conversion); at != std::string::npos; at = pattern.find(conversion)) {
    const bool separated =
        at > 0 && std::string_view(":. ").find(pattern[at - 1]) != std::string_view::npos;
    const std::size_t start = separated ? at - 1 : at;
    pattern.erase(start, at + conversion.size() - start);
  }
}

bool holdsAnyOf(std::string_view text, std::string_view first, std::string_view second) {
  return text.find(first) != std::string_view::npos || text.find(second) != std::string_view::npos;
}

constexpr int kParts = LC_CTYPE_MASK | LC_TIME_MASK;

// The user's locale; the plain one where that is not installed.
locale_t userLocale() {
  const locale_t user = newlocale(kParts, "", nullptr);
  return user != nullptr ? user : newlocale(kParts, "C", nullptr);
}

// The locale's pattern; the plain one where its texts are not UTF-8.
std::string patternOf(locale_t locale) {
  if (std::string_view(nl_langinfo_l(CODESET, locale)) != "UTF-8") {
    return std::string(kPlainPattern);
  }
  return withoutSeconds(nl_langinfo_l(T_FMT, locale), nl_langinfo_l(T_FMT_AMPM, locale));
}

}  // namespace

std::string withoutSeconds(std::string_view pattern, std::string_view twelveHours) {
  std::string result(pattern);
  replaceAll(result, "%r", twelveHours);
  replaceAll(result, "%T", "%H:%M:%S");
  replaceAll(result, "%R", "%H:%M");
  replaceAll(result, "%I", "%-I");
  replaceAll(result, "%l", "%-I");
  for (const std::string_view conversion : {"%S", "%OS", "%Z", "%z"}) {
    removeWithSeparator(result, conversion);
  }
  const bool hours = holdsAnyOf(result, "%H", "%k") || holdsAnyOf(result, "%-H", "%-I") ||
                     holdsAnyOf(result, "%OH", "%OI");
  return hours && holdsAnyOf(result, "%M", "%OM") ? result : std::string(kPlainPattern);
}

LinuxClock::LinuxClock() : locale_(userLocale()), pattern_(patternOf(locale_)) {}

LinuxClock::~LinuxClock() { freelocale(locale_); }

DateTime LinuxClock::now() const {
  const std::timespec time = currentTime();
  const std::tm parts = localTime(time.tv_sec);
  DateTime moment;
  moment.year = parts.tm_year + 1900;
  moment.month = parts.tm_mon + 1;
  moment.day = parts.tm_mday;
  moment.hour = parts.tm_hour;
  moment.minute = parts.tm_min;
  moment.second = parts.tm_sec < 60 ? parts.tm_sec : 59;  // 60 in a leap second
  moment.millisecond = static_cast<int>(time.tv_nsec / kNanosecondsInMillisecond);
  return moment;
}

std::string LinuxClock::shortTime() const {
  const std::tm parts = localTime(currentTime().tv_sec);
  std::array<char, 128> text{};
  const std::size_t length =
      strftime_l(text.data(), text.size(), pattern_.c_str(), &parts, locale_);
  return {text.data(), length};
}

}  // namespace veltrin
