// SPDX-License-Identifier: GPL-3.0-or-later
// Win32_NTLogEvent, by the journal of the system.
//
// Category is the facility of the syslog protocol under which the source logged, the nearest to a
// classification of its own. EventCode, the number of an event among those of its source, is null:
// the journal has a MESSAGE_ID of 128 bits for few of its events, which is no such number, and its
// PRIORITY tells how grave an event is and not which. That is in EventType and Type.
#include <array>
#include <cstdint>
#include <cstdio>

#include "machine/journal.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

constexpr std::int64_t kMicroseconds = 1000000;

// Priorities of RFC 5424 section 6.2.1: errors go up to 3, 4 is a warning.
constexpr std::uint64_t kLastError = 3;
constexpr std::uint64_t kWarning = 4;

struct EventType {
  int number;
  const char* name;
};

EventType typeOf(std::uint64_t priority) {
  if (priority <= kLastError) {
    return {1, "Error"};
  }
  return priority == kWarning ? EventType{2, "Warning"} : EventType{3, "Information"};
}

// "20260202102112.000123+060": the local time and its minutes ahead of UTC (CIM Infrastructure
// Specification DSP0004, section 5.2.4).
std::string momentText(const LocalMoment& local, std::int64_t microseconds) {
  const DateTime& time = local.time;
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d%02d%02d%02d%02d%02d.%06d%+04d", time.year,
                time.month, time.day, time.hour, time.minute, time.second,
                static_cast<int>(microseconds % kMicroseconds), local.offset);
  return text.data();
}

WmiObject objectOf(const JournalEvent& event, const Machine& machine) {
  WmiObject object;
  object.properties["Category"] = orNull(event.facility);
  object.properties["EventCode"] = WmiValue();
  object.properties["EventType"] =
      event.priority ? WmiValue(typeOf(*event.priority).number) : WmiValue();
  object.properties["Message"] = orNull(event.message);
  object.properties["SourceName"] = orNull(event.source);
  object.properties["TimeGenerated"] =
      momentText(machine.local(event.microseconds / kMicroseconds), event.microseconds);
  object.properties["Type"] = event.priority ? WmiValue(typeOf(*event.priority).name) : WmiValue();
  return object;
}

class JournalObjects : public WmiObjects {
 public:
  explicit JournalObjects(const WmiSources& sources)
      : machine_(sources.machine), journal_(sources.files) {}

  std::optional<WmiObject> next() override {
    const auto event = journal_.previous();
    return event ? std::optional(objectOf(*event, *machine_)) : std::nullopt;
  }

 private:
  std::shared_ptr<const Machine> machine_;
  Journal journal_;
};

}  // namespace

std::unique_ptr<WmiObjects> win32NtLogEvent(const WmiSources& sources) {
  return std::make_unique<JournalObjects>(sources);
}

}  // namespace veltrin
