// SPDX-License-Identifier: GPL-3.0-or-later
// How long our systeminfo takes from the start of its process to its end, with its
// text read through a pipe as the windows read it.
//
//   systeminfo_bench [tool [runs] | --smoke]
//
// With --smoke it runs once, and only a failed run counts.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "table.h"
#include "tool_run.h"

namespace {

constexpr double kTargetMilliseconds = 150;
constexpr int kUsualRuns = 200;

}  // namespace

int main(int count, char** arguments) {
  const bool smoke = count > 1 && std::string(arguments[1]) == "--smoke";
  const std::string tool = count > 1 && !smoke ? arguments[1] : VELTRIN_SYSTEMINFO;
  const int usual = smoke ? 1 : kUsualRuns;
  const int runs = std::max(count > 2 ? std::atoi(arguments[2]) : usual, 1);
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const auto run = veltrin::runTool({tool});
    if (!run || run->bytes == 0) {
      std::fprintf(stderr, "a run of %s failed\n", tool.c_str());
      return 1;
    }
    times.push_back(run->cost.wall);
  }
  std::sort(times.begin(), times.end());
  const double median = times[times.size() / 2];
  std::printf("whole process, %zu runs: minimum %.1f ms, median %.1f ms, maximum %.1f ms\n",
              times.size(), times.front(), median, times.back());
  veltrin::Table table(!smoke);
  table.add({"`systeminfo`, whole process, median of " + std::to_string(times.size()), median, "ms",
             "", std::nullopt, veltrin::atMost(kTargetMilliseconds)});
  return table.exitCode();
}
