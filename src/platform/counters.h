// Performance counters by path.
#pragma once

#include <cstdint>
#include <string>

namespace veltrin {

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

  // Adds a counter to a query. The handle stays as it was when that fails.
  virtual std::int32_t PdhVbAddCounter(Query query, const std::string& path, Counter& counter) = 0;

  // Samples all counters of a query.
  virtual std::int32_t PdhCollectQueryData(Query query) = 0;

  // The counter's value by the last samples; 0 with a status that is not 0 when there
  // is none, as for a rate after its first sample.
  virtual double PdhVbGetDoubleCounterValue(Counter counter, std::int32_t& status) = 0;
};

}  // namespace veltrin
