// SPDX-License-Identifier: GPL-3.0-or-later
// Where the figures of performance counters come from.
#pragma once

#include <string>
#include <vector>

namespace veltrin {

// How a counter's value comes out of its readings.
enum class CounterKind {
  Number,  // the amount of the last reading
  Rate,    // how much the amount grew from one reading to a later one, for each second
  Share,   // the same for each 1 of the basis, of which the amount is a part: 0 to 100 percent
};

// What was read of one counter at one moment. The basis of a share is what the amount is a
// part of, such as all the ticks of a processor.
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

  // Whether the counters are those of instances. An object without them has one set of
  // counters, or is not there at all while nothing can be read of it.
  virtual bool hasInstances() const { return true; }

  // Reads all counters of all instances that there are now. Nothing when the system
  // does not tell.
  virtual std::vector<CounterInstance> read() const = 0;
};

}  // namespace veltrin
