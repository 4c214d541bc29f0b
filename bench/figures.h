// SPDX-License-Identifier: GPL-3.0-or-later
// How benchmarks take their figures.
#pragma once

#include <algorithm>
#include <chrono>
#include <sys/resource.h>
#include <vector>

namespace veltrin {

// The middle one of some values, the upper one of two; 0 of none.
inline double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values.empty() ? 0 : values[values.size() / 2];
}

// The time that some work takes, by a clock that never goes back.
template <class Work>
double microseconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
      .count();
}

// Milliseconds on the wall, and of the processors: this process's and its children's.
struct Cost {
  double wall = 0;
  double processor = 0;
};

inline double processorMilliseconds() {
  double sum = 0;
  for (const int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
    rusage used{};
    getrusage(who, &used);
    for (const timeval& time : {used.ru_utime, used.ru_stime}) {
      sum += 1e3 * static_cast<double>(time.tv_sec) + 1e-3 * static_cast<double>(time.tv_usec);
    }
  }
  return sum;
}

template <class Work>
Cost costOf(Work work) {
  const double before = processorMilliseconds();
  const double wall = microseconds(work) / 1000;
  return {wall, processorMilliseconds() - before};
}

// The middle ones of each.
inline Cost median(const std::vector<Cost>& costs) {
  std::vector<double> walls;
  std::vector<double> processors;
  for (const Cost& cost : costs) {
    walls.push_back(cost.wall);
    processors.push_back(cost.processor);
  }
  return {median(walls), median(processors)};
}

}  // namespace veltrin
