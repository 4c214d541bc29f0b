// SPDX-License-Identifier: GPL-3.0-or-later
// What the two long tests cost but their waits: a Hop Stability Test of 30 hops, and the
// Outage monitor for 24 hours at one probe a second, both on the simulated platform, where
// waiting takes no time.
//
//   long_run_bench [--smoke]
//
// The first may take a second, the other three. The monitor's memory, as the allocator tells
// it, may not grow by more than a line an hour of events asks for, from the second hour to
// the last. The smoke run is of two hops and three hours, and judges no time.
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "route/MonOut.h"
#include "route/Stability.h"
#include "support/simulation.h"
#include "table.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kMostOfStability = 1.0;  // s
constexpr double kMostOfOutage = 3.0;
constexpr std::int64_t kHour = 3'600'000;    // ms
constexpr std::size_t kMostGrowth = 65'536;  // bytes: a day of events

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

std::string traceOf(int hops) {
  std::string text = "\r\nTracing route to x [192.0.2.7]\r\nover a maximum of 30 hops:\r\n\r\n";
  for (int hop = 1; hop <= hops; ++hop) {
    text += "  1    <1 ms    12 ms    13 ms  router [10.0.0." + std::to_string(hop) + "] \r\n";
  }
  return text + "\r\nTrace complete.\r\n";
}

// Seconds of a test of so many hops. Ends the benchmark when it did not ask them all.
double timeOfStability(int hops) {
  veltrin::Simulation simulation;
  simulation.processes.tool = [hops](const std::string& command) {
    const bool isTrace = command.starts_with("tracert");
    return std::vector<veltrin::ToolWrite>{{20, isTrace ? traceOf(hops) : veltrin::pingReply(30)}};
  };
  simulation.desktop.onModal = [&](veltrin::Form& form) {
    simulation.loop.after(10, [&form] { form.close(); });
  };
  const auto window = simulation.program().show<veltrin::Stability>();
  const auto start = Clock::now();
  window->StartIt.press();
  const double taken = secondsSince(start);
  const std::size_t pings = simulation.processes.starts.size() - 5;  // four trials, one trace
  if (pings != static_cast<std::size_t>(hops) * 100) {
    std::printf("the test sent %zu pings\n", pings);
    std::exit(EXIT_FAILURE);
  }
  return taken;
}

struct Day {
  double seconds = 0;
  std::vector<std::size_t> heap;  // bytes in use behind each hour
  std::size_t probes = 0;
};

Day watchForHours(int hours) {
  veltrin::Simulation simulation;
  simulation.processes.tool = [](const std::string&) {
    return std::vector<veltrin::ToolWrite>{{20, "Pinging x [192.0.2.7] with 32 bytes\r\n"}};
  };
  simulation.icmp.keepsEchoes = false;
  Day day;
  day.heap.reserve(static_cast<std::size_t>(hours));
  simulation.icmp.reply = [&day](const auto&) {
    ++day.probes;
    return static_cast<std::uint32_t>(20 + day.probes % 17);
  };
  const auto window = simulation.program().show<veltrin::MonOut>();
  window->Combo1.enter("1");
  for (int hour = 1; hour <= hours; ++hour) {
    simulation.loop.at(hour * kHour, [&day] { day.heap.push_back(mallinfo2().uordblks); });
  }
  simulation.loop.at(hours * kHour + 1, [&window] { window->Command3.press(); });
  const auto start = Clock::now();
  window->Command3.press();
  day.seconds = secondsSince(start);
  return day;
}

}  // namespace

int main(int argc, char** argv) {
  const bool isSmoke = argc > 1 && std::string_view(argv[1]) == "--smoke";
  const int hops = isSmoke ? 2 : 30;
  const double stability = timeOfStability(hops);
  const Day day = watchForHours(isSmoke ? 3 : 24);
  for (std::size_t hour = 1; hour < day.heap.size(); ++hour) {
    std::printf("  heap behind hour %2zu: %zu bytes\n", hour + 1, day.heap[hour]);
  }
  const std::size_t growth = day.heap.back() > day.heap[1] ? day.heap.back() - day.heap[1] : 0;
  veltrin::Table table(!isSmoke);
  table.add({"A Hop Stability Test of " + std::to_string(hops) + " hops but its waits", stability,
             "s", "", std::nullopt, veltrin::atMost(kMostOfStability)});
  table.add({"The Outage monitor for " + std::to_string(day.heap.size()) + " hours, " +
                 std::to_string(day.probes) + " probes, but its waits",
             day.seconds, "s", "", std::nullopt, veltrin::atMost(kMostOfOutage)});
  table.add({"Growth of its heap from the second hour to the last", static_cast<double>(growth),
             "bytes", "", std::nullopt, veltrin::atMost(kMostGrowth)});
  return growth <= kMostGrowth ? table.exitCode() : EXIT_FAILURE;
}
