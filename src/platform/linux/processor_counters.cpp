// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/processor_counters.h"

#include <cctype>
#include <cstddef>
#include <fstream>
#include <numeric>
#include <optional>
#include <sstream>

namespace veltrin {
namespace {

// Columns of a line behind its name. The ticks of guests are within those of user and
// nice already, and are left out of the sum.
enum Column : std::size_t {
  kUser,
  kNice,
  kSystem,
  kIdle,
  kIowait,
  kIrq,
  kSoftirq,
  kSteal,
  kColumns
};

// The instance that a line tells of: "cpu" the total, "cpu7" processor 7; nothing for
// other lines.
std::optional<std::string> instanceOf(const std::string& name) {
  constexpr std::size_t kPrefix = 3;
  if (name.compare(0, kPrefix, "cpu") != 0) return std::nullopt;
  std::string number = name.substr(kPrefix);
  if (number.empty()) return "_Total";
  return number;
}

std::optional<CounterInstance> instanceIn(const std::string& line) {
  std::istringstream words(line);
  std::string name;
  words >> name;
  const auto instance = instanceOf(name);
  if (!instance) return std::nullopt;
  std::vector<double> ticks(kColumns);
  for (double& tick : ticks) {
    if (!(words >> tick)) break;  // older kernels have fewer columns
  }
  // A processor that waits for a disk has nothing to do, either.
  const double idle = ticks[kIdle] + ticks[kIowait];
  const double all = std::accumulate(ticks.begin(), ticks.end(), 0.0);
  return CounterInstance{*instance, {{idle, all}, {all - idle, all}}};
}

}  // namespace

std::vector<CounterName> ProcessorCounters::counters() const {
  return {{"% Idle Time", CounterKind::Share}, {"% Processor Time", CounterKind::Share}};
}

std::vector<CounterInstance> ProcessorCounters::read() const {
  std::ifstream file(procFolder_ + "/stat");
  std::vector<CounterInstance> instances;
  for (std::string line; std::getline(file, line);) {
    if (auto instance = instanceIn(line)) instances.push_back(std::move(*instance));
  }
  return instances;
}

}  // namespace veltrin
