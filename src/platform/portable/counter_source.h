// Where the figures of performance counters come from.
#pragma once

#include <string>
#include <vector>

namespace veltrin {

// How a counter's value comes out of its readings.
enum class CounterKind {
  Number,  // the amount of the last reading
  Rate,    // how much the amount grew from one reading to the next for each 1 of the basis
  Share,   // the same of an amount that is a part of the basis, in percent: 0 to 100
};

// What was read of one counter at one moment. The basis is what growth is counted by:
// the seconds of a clock, or all the ticks of which the amount is a part.
struct CounterReading {
  double amount = 0;
  double basis = 1;
};

struct CounterName {
  std::string name;  // "% Idle Time"
  CounterKind kind = CounterKind::Number;
};

// What was read of one instance: a reading for each counter of the source, in order.
struct CounterInstance {
  std::string name;  // empty for an object that has no instances
  std::vector<CounterReading> readings;
};

// One object of the counter service. A system adds an object by adding a source.
class CounterSource {
 public:
  virtual ~CounterSource() = default;

  // The object's name ("Processor") and its counters.
  virtual std::string object() const = 0;
  virtual std::vector<CounterName> counters() const = 0;

  // Reads all counters of all instances that there are now. Nothing when the system
  // does not tell.
  virtual std::vector<CounterInstance> read() const = 0;
};

}  // namespace veltrin
