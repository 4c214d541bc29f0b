// SPDX-License-Identifier: GPL-3.0-or-later
// What a tick of the network monitors costs of the counters, after their windows have been
// opened once, ten times and a hundred times: each opening adds its counters again, and none
// is ever taken away.
//
//   counters_bench [--smoke]
//
// A tick is that of both: for each of six interfaces a collection and three values, then a
// collection and seventeen values for each protocol, from this machine's own kernel. Where
// there are fewer interfaces, some stand for several; without IPv6 its counters are those of
// IPv4. A tick may cost a tenth more after a hundred openings. The
// smoke run has one tick of each and judges nothing.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/linux_counters.h"
#include "platform/linux/protocol_counters.h"
#include "table.h"

namespace {

using Clock = std::chrono::steady_clock;
using veltrin::Counters;

constexpr std::size_t kInterfaces = 6;
constexpr double kMostRatio = 1.1;

// All the handles that a pair of opened windows has.
struct Opening {
  std::array<std::array<Counters::Counter, 3>, kInterfaces> interfaces{};
  std::array<std::vector<Counters::Counter>, 2> protocols;
};

class Monitors {
 public:
  Monitors() {
    if (counters_.PdhOpenQuery(query_) != 0) return;
    constexpr std::uint32_t kLength = 32768;
    std::string names(kLength, '\0');
    std::string list(kLength, '\0');
    std::uint32_t namesLength = kLength;
    std::uint32_t length = kLength;
    if (counters_.PdhEnumObjectItemsA("", "Network Interface", names, namesLength, list, length,
                                      veltrin::kPerfDetailExpert, 0) != 0) {
      return;
    }
    for (std::size_t at = 0; at < length && list[at] != '\0'; at = list.find('\0', at) + 1) {
      instances_.emplace_back(list.c_str() + at);
    }
  }

  std::size_t interfaces() const { return instances_.size(); }

  // Adds all counters; false when one cannot be.
  bool open() {
    bool added = !instances_.empty();
    for (std::size_t i = 0; i < kInterfaces && added; ++i) {
      const std::string object = "\\Network Interface(" + instances_[i % instances_.size()] + ")\\";
      auto& handles = opening_.interfaces[i];
      added = add(object + "Bytes Total/sec", handles[0]) &&
              add(object + "Bytes Received/sec", handles[1]) &&
              add(object + "Bytes Sent/sec", handles[2]);
    }
    opening_.protocols = {};
    for (std::vector<Counters::Counter>& handles : opening_.protocols) {
      const bool second = &handles == &opening_.protocols[1];
      for (const veltrin::CounterName& each : veltrin::IPv4Counters("").counters()) {
        handles.emplace_back();
        added = added && ((second && add("\\IPv6\\" + each.name, handles.back())) ||
                          add("\\IPv4\\" + each.name, handles.back()));
      }
    }
    return added;
  }

  // Answers a sum of all that was read, so that nothing is left out.
  double tick() {
    double sum = 0;
    std::int32_t status = 0;
    const auto read = [&](const auto& handles) {
      counters_.PdhCollectQueryData(query_);
      for (const Counters::Counter handle : handles) {
        sum += counters_.PdhVbGetDoubleCounterValue(handle, status);
      }
    };
    for (const auto& handles : opening_.interfaces) read(handles);
    for (const auto& handles : opening_.protocols) read(handles);
    return sum;
  }

 private:
  bool add(const std::string& path, Counters::Counter& handle) {
    return counters_.PdhVbAddCounter(query_, path, handle) == 0;
  }

  veltrin::LinuxCounters counters_;
  Counters::Query query_ = 0;
  std::vector<std::string> instances_;
  Opening opening_;
};

// Microseconds of a tick, the median of so many.
double costOf(Monitors& monitors, std::size_t ticks) {
  std::vector<double> costs;
  double sum = 0;
  for (std::size_t i = 0; i < ticks; ++i) {
    const auto begin = Clock::now();
    sum += monitors.tick();
    costs.push_back(std::chrono::duration<double, std::micro>(Clock::now() - begin).count());
  }
  std::sort(costs.begin(), costs.end());
  return sum < 0 ? 0 : costs[costs.size() / 2];
}

// Monitors that were opened so often.
bool openTo(Monitors& monitors, int openings) {
  for (int i = 0; i < openings; ++i) {
    if (!monitors.open()) return false;
  }
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  const bool smoke = count > 1 && std::string_view(arguments[1]) == "--smoke";
  veltrin::Table table(!smoke);
  constexpr std::array kOpenings{1, 10, 100};
  std::array<Monitors, kOpenings.size()> monitors;
  if (monitors[0].interfaces() == 0) {
    table.cannot("A tick of both network monitors", "this machine tells no network interfaces");
    return table.exitCode();
  }
  for (std::size_t i = 0; i < kOpenings.size(); ++i) {
    if (!openTo(monitors[i], kOpenings[i])) {
      std::fprintf(stderr, "a counter could not be added\n");
      return 1;
    }
  }
  // In turn, so that what else the machine does falls on all of them alike.
  const int rounds = smoke ? 1 : 21;
  const std::size_t ticks = smoke ? 1 : 101;
  std::array<std::vector<double>, kOpenings.size()> costs;
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < kOpenings.size(); ++i) {
      costs[i].push_back(costOf(monitors[i], ticks));
    }
  }
  std::printf("a tick of both monitors, %zu interfaces, median of %d times %zu:\n",
              monitors[0].interfaces(), rounds, ticks);
  std::array<double, kOpenings.size()> medians{};
  for (std::size_t i = 0; i < kOpenings.size(); ++i) {
    std::sort(costs[i].begin(), costs[i].end());
    medians[i] = costs[i][costs[i].size() / 2];
    std::printf("%3d openings  %.0f us\n", kOpenings[i], medians[i]);
  }
  table.add(
      {"A tick of both network monitors, eight collections and 52 values, windows opened 100 "
       "times",
       medians.back(), "us", "opened once", medians.front(), veltrin::atMost(kMostRatio)});
  return table.exitCode();
}
