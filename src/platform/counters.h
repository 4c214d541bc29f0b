// SPDX-License-Identifier: GPL-3.0-or-later
// Performance counters by path.
#pragma once

#include <cstdint>
#include <string>

namespace veltrin {

// How much of an object's counters is told: all that an expert uses (winperf.h).
inline constexpr std::uint32_t kPerfDetailExpert = 300;

// A buffer was too small for the names (PDH_MORE_DATA).
inline constexpr std::int32_t kPdhMoreData = static_cast<std::int32_t>(0x800007D2U);

// The calls of the Performance Data Helper that the program uses. Statuses are the
// system's: 0 for success. A path is two backslashes, the machine's name, and
// "\\Object(instance)\\Counter".
class Counters {
 public:
  using Query = std::intptr_t;
  using Counter = std::intptr_t;

  virtual ~Counters() = default;

  // Opens an empty query with samples of the present; it lives until the program ends.
  virtual std::int32_t PdhOpenQuery(Query& query) = 0;

  // The names of an object's counters and instances on a machine, each behind the other
  // and ended by a NUL, with one more NUL at the end of all. `counters` and `instances` are
  // buffers, and the lengths tell their sizes; on success they become the lengths of what
  // was written, ends included. kPdhMoreData when a buffer is too small. Detail is
  // kPerfDetailExpert, flags are 0.
  virtual std::int32_t PdhEnumObjectItemsA(const std::string& machine, const std::string& object,
                                           std::string& counters, std::uint32_t& countersLength,
                                           std::string& instances, std::uint32_t& instancesLength,
                                           std::uint32_t detail, std::uint32_t flags) = 0;

  // Adds a counter to a query. The handle stays as it was when that fails.
  virtual std::int32_t PdhVbAddCounter(Query query, const std::string& path, Counter& counter) = 0;

  // Samples all counters of a query.
  virtual std::int32_t PdhCollectQueryData(Query query) = 0;

  // The counter's value by the last samples; 0 with a status that is not 0 when there
  // is none, as for a rate after its first sample.
  virtual double PdhVbGetDoubleCounterValue(Counter counter, std::int32_t& status) = 0;
};

}  // namespace veltrin
