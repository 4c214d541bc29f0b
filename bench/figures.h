// How benchmarks take their figures.
#pragma once

#include <algorithm>
#include <chrono>
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

}  // namespace veltrin
