// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/moments.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr std::string_view kUtc = "(UTC) Coordinated Universal Time";

// Where the zones are, and what their paths end with.
constexpr std::string_view kZones = "/zoneinfo/";

constexpr std::array<std::string_view, 8> kNamesOfUtc{
    "UTC", "Etc/UTC", "UCT", "Etc/UCT", "Zulu", "Etc/Zulu", "Universal", "Etc/Universal"};

std::string twoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

// "Europe/Berlin" in "/usr/share/zoneinfo/Europe/Berlin" or in a relative path.
std::string zoneInPath(std::string_view path) {
  const std::size_t at = path.find(kZones);
  if (at == std::string_view::npos) {
    return "";
  }
  std::string_view zone = path.substr(at + kZones.size());
  for (const std::string_view kind : {"posix/", "right/"}) {
    if (zone.starts_with(kind)) {
      zone.remove_prefix(kind.size());
    }
  }
  return printable(zone);
}

// The name of the zone; empty when it has none. The variable TZ goes before the
// system's choice, as it does in all that the C library prints (tzset(3)).
std::string zoneName(const FileTree& files, const Machine& machine) {
  std::string chosen = machine.environment("TZ");
  if (chosen.starts_with(":")) {
    chosen.erase(0, 1);
  }
  if (chosen.starts_with("/")) {
    return zoneInPath(chosen);
  }
  if (!chosen.empty()) {
    return files.written("/usr/share/zoneinfo/" + chosen) ? printable(chosen) : std::string();
  }
  const std::string linked = zoneInPath(files.linkTarget("/etc/localtime"));
  return linked.empty() ? printable(files.line("/etc/timezone")) : linked;
}

bool isUtc(const std::string& name, const std::string& abbreviation) {
  if (name.empty()) {
    return abbreviation == "UTC";
  }
  return std::find(kNamesOfUtc.begin(), kNamesOfUtc.end(), name) != kNamesOfUtc.end();
}

// The form of a moment in a log; each 0 stands for any digit, and "+" for any sign.
constexpr std::string_view kLogForm = "[0000-00-00T00:00:00+0000]";

bool fitsForm(char character, char form) {
  if (form == '0') {
    return character >= '0' && character <= '9';
  }
  return character == form || (form == '+' && character == '-');
}

}  // namespace

std::string momentText(const Machine& machine, std::int64_t seconds) {
  const DateTime time = machine.local(seconds).time;
  const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
  return std::to_string(time.month) + "/" + std::to_string(time.day) + "/" +
         std::to_string(time.year) + ", " + std::to_string(hour) + ":" + twoDigits(time.minute) +
         ":" + twoDigits(time.second) + (time.hour < 12 ? " AM" : " PM");
}

std::string timeZoneText(const FileTree& files, const Machine& machine) {
  const LocalMoment now = machine.local(machine.now());
  const std::string name = zoneName(files, machine);
  if (now.offset == 0 && isUtc(name, now.zone)) {
    return std::string(kUtc);
  }
  const int distance = std::abs(now.offset);
  return "(UTC" + std::string(now.offset < 0 ? "-" : "+") + twoDigits(distance / 60) + ":" +
         twoDigits(distance % 60) + ") " + (name.empty() ? printable(now.zone) : name);
}

std::optional<std::int64_t> momentInLog(std::string_view line) {
  namespace chrono = std::chrono;
  if (line.size() < kLogForm.size() ||
      !std::equal(kLogForm.begin(), kLogForm.end(), line.begin(),
                  [](char form, char character) { return fitsForm(character, form); })) {
    return std::nullopt;
  }
  const auto number = [&](std::size_t at, std::size_t size) {
    return static_cast<int>(wholeNumber(line.substr(at, size)).value_or(0));
  };
  const chrono::year_month_day day(chrono::year(number(1, 4)),
                                   chrono::month(static_cast<unsigned>(number(6, 2))),
                                   chrono::day(static_cast<unsigned>(number(9, 2))));
  if (!day.ok()) {
    return std::nullopt;
  }
  const auto offset = chrono::hours(number(21, 2)) + chrono::minutes(number(23, 2));
  const auto clock = chrono::hours(number(12, 2)) + chrono::minutes(number(15, 2)) +
                     chrono::seconds(number(18, 2));
  const chrono::sys_seconds moment =
      chrono::sys_days(day) + clock - (line[20] == '-' ? -offset : offset);
  return moment.time_since_epoch().count();
}

}  // namespace veltrin
