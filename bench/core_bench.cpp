// Costs of what runs for each chunk of a console tool's text and for each setting.
//
//   core_bench [--smoke | words of Google Benchmark]
#include <benchmark/benchmark.h>
#include <string>
#include <string_view>
#include <vector>

#include "forms/text_box.h"
#include "ping/pingmod.h"
#include "ping/pingtester.h"
#include "platform/portable/profile_text.h"
#include "support/simulation.h"

namespace {

using namespace veltrin;

// The chain reading of one chunk that holds the average at its end.
void readAverageOfAChunk(benchmark::State& state) {
  const std::string chunk = pingReply(124).substr(0, kReadGrain - 1) + "Average = 124ms \r\n";
  Loose time;
  for ([[maybe_unused]] auto _ : state) {
    readAverage(chunk, time);
    benchmark::DoNotOptimize(time);
  }
}
BENCHMARK(readAverageOfAChunk);

// A value in the last of so many sections of twenty keys.
void readASetting(benchmark::State& state) {
  std::string text;
  for (int section = 0; section < state.range(0); ++section) {
    text += "[Section " + std::to_string(section) + "]\r\n";
    for (int key = 0; key < 20; ++key) text += "Key " + std::to_string(key) + "=value\r\n";
  }
  const ProfileText profile(text);
  const std::string last = "Section " + std::to_string(state.range(0) - 1);
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(profile.value(last, "Key 19"));
}
BENCHMARK(readASetting)->Arg(1)->Arg(10)->Arg(100);

// One more chunk behind a text of so many bytes: the cost has to stay the same.
void appendAChunk(benchmark::State& state) {
  TextBox box;
  box.text = std::string(static_cast<std::size_t>(state.range(0)), 'x');
  const std::string chunk(kReadGrain, 'y');
  for ([[maybe_unused]] auto _ : state) box.text += chunk;
}
BENCHMARK(appendAChunk)->Arg(1024)->Arg(8L * 1024 * 1024)->Iterations(10000);

// A whole run of the Ping Test, a hundred passes over five destinations, on the
// simulated platform.
void runAHundredPasses(benchmark::State& state) {
  for ([[maybe_unused]] auto _ : state) {
    Simulation simulation;
    simulation.processes.tool = [](const std::string&) {
      return std::vector<ToolWrite>{{20, pingReply(20)}};
    };
    const auto window = simulation.program().show<pingtester>();
    simulation.desktop.type(window->Combo1, "100");
    simulation.desktop.click(window->Command1);
    simulation.run(1'000'000);
  }
}
BENCHMARK(runAHundredPasses)->Unit(benchmark::kMillisecond);

}  // namespace

// Google Benchmark's own main(), which also knows --smoke: each case for no longer than
// it has to.
int main(int argc, char** argv) {
  std::string shortest = "--benchmark_min_time=0.001";
  std::vector<char*> words(argv, argv + argc);
  for (char*& word : words) {
    if (std::string_view(word) == "--smoke") word = shortest.data();
  }
  int count = argc;
  benchmark::Initialize(&count, words.data());
  if (benchmark::ReportUnrecognizedArguments(count, words.data())) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
