// SPDX-License-Identifier: GPL-3.0-or-later
// Costs of what runs for each chunk of a console tool's text and for each setting.
//
//   core_bench [--smoke | words of Google Benchmark]
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "byte_texts.h"
#include "figures.h"
#include "forms/text_box.h"
#include "ping/pingmod.h"
#include "ping/pingtester.h"
#include "platform/portable/profile_text.h"
#include "route/tracert_reader.h"
#include "support/simulation.h"
#include "table.h"
#include "text/strings.h"

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

// Nanoseconds of one call among many.
template <class Routine>
double costOf(Routine&& routine) {
  constexpr int kCalls = 500;
  const auto start = std::chrono::steady_clock::now();
  for (int call = 0; call < kCalls; ++call) benchmark::DoNotOptimize(routine());
  const std::chrono::duration<double, std::nano> passed = std::chrono::steady_clock::now() - start;
  return passed.count() / kCalls;
}

// What counts characters beside what counts bytes, by turns, so that other load on the
// machine meets both: the median costs of a call, and their ratio.
template <class Characters, class Bytes>
void compare(benchmark::State& state, Characters&& characters, Bytes&& bytes) {
  std::vector<double> ofCharacters;
  std::vector<double> ofBytes;
  for (auto _ : state) {
    ofCharacters.push_back(costOf(characters));
    ofBytes.push_back(costOf(bytes));
  }
  state.counters["characters_ns"] = median(ofCharacters);
  state.counters["bytes_ns"] = median(ofBytes);
  state.counters["ratio"] = median(ofCharacters) / median(ofBytes);
}

// A chunk's worth of ping's text that ends in the summary line, with some text before it.
std::string chunkOfPing(const std::string& before) {
  const std::string end = "    Minimum = 124ms, Maximum = 124ms, Average = 124ms \r\n";
  std::string chunk = before;
  const std::string reply = pingReply(124);
  while (chunk.size() < kReadGrain) chunk += reply;
  return chunk.substr(0, kReadGrain - end.size()) + end;
}

// A chunk's worth of tracert's lines.
std::string chunkOfTracert(const std::string& name) {
  std::string chunk = "over a maximum of 30 hops:\r\n\r\n";
  chunk += "  1    <1 ms    <1 ms    <1 ms  " + name + " [192.0.2.1] \r\n";
  chunk += "  2     *        *        *     Request timed out.\r\n";
  while (chunk.size() < kReadGrain) chunk += "  3    12 ms    11 ms    12 ms  198.51.100.5 \r\n";
  return chunk.substr(0, kReadGrain);
}

// ASCII, and for information a text with letters beyond it.
std::string pingText(const benchmark::State& state) {
  return chunkOfPing(state.range(0) == 0 ? "" : "Zeit\u00FCberschreitung der Anforderung, \u20AC ");
}

std::string tracertText(const benchmark::State& state) {
  return chunkOfTracert(state.range(0) == 0 ? "gateway.example" : "m\u00FCnchen\u20AC.example");
}

void lengthOfAChunk(benchmark::State& state) {
  const std::string chunk = pingText(state);
  compare(
      state, [&] { return Len(chunk); }, [&] { return bytes::Len(chunk); });
}
BENCHMARK(lengthOfAChunk)->ArgName("beyondAscii")->Arg(0)->Arg(1);

void frontOfAChunk(benchmark::State& state) {
  const std::string chunk = pingText(state);
  compare(
      state, [&] { return Left(chunk, 27); }, [&] { return bytes::Left(chunk, 27); });
}
BENCHMARK(frontOfAChunk)->ArgName("beyondAscii")->Arg(0)->Arg(1);

void middleOfAChunk(benchmark::State& state) {
  const std::string chunk = pingText(state);
  compare(
      state, [&] { return Mid(chunk, 128, 9); }, [&] { return bytes::Mid(chunk, 128, 9); });
}
BENCHMARK(middleOfAChunk)->ArgName("beyondAscii")->Arg(0)->Arg(1);

void searchInAChunk(benchmark::State& state) {
  const std::string chunk = pingText(state);
  compare(
      state, [&] { return InStr(1, chunk, "Average = "); },
      [&] { return bytes::InStr(1, chunk, "Average = "); });
}
BENCHMARK(searchInAChunk)->ArgName("beyondAscii")->Arg(0)->Arg(1);

void searchInAnyCaseInAChunk(benchmark::State& state) {
  const std::string chunk = pingText(state);
  compare(
      state, [&] { return InStr(1, chunk, "Average = ", Compare::IgnoreCase); },
      [&] { return bytes::InStr(1, chunk, "Average = ", Compare::IgnoreCase); });
}
BENCHMARK(searchInAnyCaseInAChunk)->ArgName("beyondAscii")->Arg(0)->Arg(1);

void chainReadingOfAChunk(benchmark::State& state) {
  const std::string chunk = pingText(state);
  Loose time;
  const auto reading = [&](auto&& read) {
    return [&, read] {
      read(chunk, time);
      return &time;
    };
  };
  compare(state, reading(&readAverage), reading(&bytes::readAverage));
}
BENCHMARK(chainReadingOfAChunk)->ArgName("beyondAscii")->Arg(0)->Arg(1);

void tailReadingOfAChunk(benchmark::State& state) {
  const std::string chunk = pingText(state);
  Loose time;
  compare(
      state, [&] { return readTail(chunk, time); }, [&] { return bytes::readTail(chunk, time); });
}
BENCHMARK(tailReadingOfAChunk)->ArgName("beyondAscii")->Arg(0)->Arg(1);

void readingOfAChunkOfTracert(benchmark::State& state) {
  const std::string chunk = tracertText(state);
  compare(
      state, [&] { return readTracert(chunk); }, [&] { return bytes::readTracert(chunk); });
}
BENCHMARK(readingOfAChunkOfTracert)->ArgName("beyondAscii")->Arg(0)->Arg(1);

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

// What the text functions may take of what they take when they count bytes, by the names of
// the cases.
constexpr double kMostOfBytes = 1.0;
constexpr double kMostOfTracertBytes = 1.1;

// Prints as usual, and keeps the comparisons for the table.
class TableReporter : public benchmark::ConsoleReporter {
 public:
  TableReporter() : ConsoleReporter(OO_None) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    runs_.insert(runs_.end(), runs.begin(), runs.end());
  }

  void addTo(Table& table) const {
    for (const Run& run : runs_) {
      if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
      const auto ours = run.counters.find("characters_ns");
      const auto theirs = run.counters.find("bytes_ns");
      const std::string name = run.benchmark_name();
      if (ours == run.counters.end() || theirs == run.counters.end()) {
        table.add({"`" + name + "`", run.GetAdjustedRealTime(),
                   benchmark::GetTimeUnitString(run.time_unit), "", std::nullopt, std::nullopt});
      } else {
        table.add({"`" + name + "`", ours->second.value, "ns", "the same by bytes",
                   theirs->second.value, goalOf(name)});
      }
    }
  }

 private:
  // Goals are those of the readings of text in ASCII, as all tools print it.
  static std::optional<Goal> goalOf(const std::string& name) {
    if (name == "chainReadingOfAChunk/beyondAscii:0" ||
        name == "tailReadingOfAChunk/beyondAscii:0") {
      return atMost(kMostOfBytes);
    }
    if (name == "readingOfAChunkOfTracert/beyondAscii:0") return atMost(kMostOfTracertBytes);
    return std::nullopt;
  }

  std::vector<Run> runs_;
};

}  // namespace

// Google Benchmark's own main(), which also knows --smoke: each case for no longer than
// it has to.
int main(int argc, char** argv) {
  const bool isSmoke =
      std::any_of(argv, argv + argc, [](std::string_view word) { return word == "--smoke"; });
  veltrin::Table table(!isSmoke);
  std::string shortest = "--benchmark_min_time=0.001";
  std::vector<char*> words(argv, argv + argc);
  for (char*& word : words) {
    if (std::string_view(word) == "--smoke") word = shortest.data();
  }
  int count = argc;
  benchmark::Initialize(&count, words.data());
  if (benchmark::ReportUnrecognizedArguments(count, words.data())) return 1;
  TableReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.addTo(table);
  return table.exitCode();
}
