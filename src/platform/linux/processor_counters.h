// SPDX-License-Identifier: GPL-3.0-or-later
// The counters of the object "Processor".
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/portable/counter_source.h"

namespace veltrin {

// The instances are the processors that are at work, by number, and "_Total" for all
// together. The shares of time are in percent: 0 to 100.
class ProcessorCounters : public CounterSource {
 public:
  explicit ProcessorCounters(std::string procFolder) : procFolder_(std::move(procFolder)) {}

  std::string object() const override { return "Processor"; }
  std::vector<CounterName> counters() const override;

  // From the file "stat", whose lines "cpu" and "cpuN" hold ticks since the start of
  // the system (proc_stat(5)).
  std::vector<CounterInstance> read() const override;

 private:
  std::string procFolder_;
};

}  // namespace veltrin
