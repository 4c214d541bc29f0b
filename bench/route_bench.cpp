// SPDX-License-Identifier: GPL-3.0-or-later
// Compares tracert of ours with the system's own tools over the same paths of the
// lab, one on which every hop answers and one with silent hops, and pathping with the
// time that it tells before it counts.
//
//   route_bench [runs | --smoke]
//
// All run in turn, so that what else the machine does falls on all alike. Ends with 77
// when the lab cannot run. With --smoke each tool runs once, and only a failed run counts.
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <optional>
#include <regex>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "figures.h"
#include "table.h"

namespace {

using veltrin::median;

// The most that ours may take for one unit of the other tool's time. Silent hops ours
// gives half a second at least, the other tool less when the next hop is near.
constexpr double kTracerouteRatio = 1.0;
constexpr double kTracerouteRatioSilent = 1.5;
constexpr double kMtrRatio = 0.1;

// How far round trips may differ in milliseconds from mtr's averages.
constexpr double kTripDifference = 1.0;

// What pathping may take beside the trace, for the time that it tells, and the
// share of that time for which it may use a processor.
constexpr double kPathpingRatio = 1.15;
constexpr double kPathpingShare = 0.02;
constexpr int kHops = 15;

using Words = std::vector<std::string>;

struct Run {
  bool well = false;
  double wall = 0;  // seconds
  double cpu = 0;   // seconds of a processor
  std::string text;
};

// Runs a program to its end.
Run runProgram(Words words) {
  Run run;
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    return run;
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) {
    pointers.push_back(word.data());
  }
  pointers.push_back(nullptr);
  const auto before = std::chrono::steady_clock::now();
  pid_t process = 0;
  const int failure =
      posix_spawnp(&process, pointers[0], &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  std::array<char, 4096> part{};
  ssize_t size = 0;
  while ((size = read(ends[0], part.data(), part.size())) > 0) {
    run.text.append(part.data(), static_cast<std::size_t>(size));
  }
  close(ends[0]);
  int status = 0;
  rusage usage{};
  if (failure != 0 || wait4(process, &status, 0, &usage) != process) {
    return run;
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - before;
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  run.well = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  run.wall = taken.count();
  run.cpu = seconds(usage.ru_utime) + seconds(usage.ru_stime);
  return run;
}

// Round trips by hop: the mean of three columns; "<1" counts as a half.
std::vector<double> tripsOfTracert(const std::string& text) {
  static const std::regex kLine("\n *[0-9]+  +(<?[0-9]+) ms +(<?[0-9]+) ms +(<?[0-9]+) ms  ");
  std::vector<double> trips;
  for (std::sregex_iterator line(text.begin(), text.end(), kLine), end; line != end; ++line) {
    double sum = 0;
    for (std::size_t column = 1; column <= 3; ++column) {
      const std::string time = (*line)[column];
      sum += time[0] == '<' ? 0.5 : std::stod(time);
    }
    trips.push_back(sum / 3);
  }
  return trips;
}

// The averages that mtr's report tells, behind loss, count and last trip.
std::vector<double> tripsOfMtr(const std::string& text) {
  static const std::regex kLine("[0-9.]+% +[0-9]+ +[0-9.]+ +([0-9.]+)");
  std::vector<double> trips;
  for (std::sregex_iterator line(text.begin(), text.end(), kLine), end; line != end; ++line) {
    trips.push_back(std::stod((*line)[1]));
  }
  return trips;
}

double largestDifference(const std::vector<double>& some, const std::vector<double>& others) {
  if (some.empty() || some.size() != others.size()) {
    return std::numeric_limits<double>::infinity();
  }
  double largest = 0;
  for (std::size_t at = 0; at < some.size(); ++at) {
    largest = std::max(largest, std::abs(some[at] - others[at]));
  }
  return largest;
}

std::string named(const Words& words) {
  std::string name = words[0];
  for (std::size_t at = 1; at + 1 < words.size(); ++at) name += ' ' + words[at];
  return "`" + name + "`";
}

// The time of ours beside the other tool's, medians, both in turn. Whether ours ran well.
bool compareTimes(const std::string& what, int runs, const Words& ours, const Words& other,
                  double most, veltrin::Table& table) {
  std::vector<double> oursTimes;
  std::vector<double> otherTimes;
  bool isWell = true;
  bool isOtherWell = true;
  for (int i = 0; i < runs; ++i) {
    const Run first = runProgram(ours);
    const Run second = runProgram(other);
    isWell = isWell && first.well;
    isOtherWell = isOtherWell && second.well;
    oursTimes.push_back(first.wall);
    otherTimes.push_back(second.wall);
  }
  table.add({what, median(oursTimes), "s", named(other),
             isOtherWell ? std::optional(median(otherTimes)) : std::nullopt,
             veltrin::atMost(most)});
  return isWell;
}

bool compareTraces(const std::string& path, int runs, bool clean, veltrin::Table& table) {
  const double most = clean ? kTracerouteRatio : kTracerouteRatioSilent;
  const Words numeric = {VELTRIN_TRACERT, "-4", "-d", "target.example"};
  const bool isNumericWell =
      compareTimes("`tracert -d`" + path, runs, numeric,
                   {"traceroute", "-4", "-I", "-n", "target.example"}, most, table);
  const bool isNamedWell =
      compareTimes("`tracert`" + path, runs, {VELTRIN_TRACERT, "-4", "target.example"},
                   {"traceroute", "-4", "-I", "target.example"}, most, table);
  const Words counted = {"mtr", "-4", "-r", "-c", "3", "-n", "target.example"};
  const Run mtr = runProgram(counted);
  const Run ours = runProgram(numeric);
  table.add({"`tracert -d`" + path, ours.wall, "s", named(counted),
             mtr.well ? std::optional(mtr.wall) : std::nullopt, veltrin::atMost(kMtrRatio)});
  if (clean && mtr.well) {
    table.add({"Its round trips, the largest difference to those of `mtr`",
               largestDifference(tripsOfTracert(ours.text), tripsOfMtr(mtr.text)), "ms", "",
               std::nullopt, veltrin::atMost(kTripDifference)});
  }
  return isNumericWell && isNamedWell && ours.well;
}

// One run of pathping beside a trace; `hops` is how many periods a round takes.
bool measurePathping(const Words& options, int queries, int period, int hops,
                     veltrin::Table& table) {
  const Run trace = runProgram({VELTRIN_TRACERT, "-4", "-d", "target.example"});
  Words words = {VELTRIN_PATHPING,      "-4", "-n", "-q", std::to_string(queries), "-p",
                 std::to_string(period)};
  words.insert(words.end(), options.begin(), options.end());
  words.emplace_back("target.example");
  const Run run = runProgram(words);
  words[0] = "pathping";
  const double told = static_cast<double>(queries) * period * hops / 1000;  // seconds
  table.add({named(words) + " behind its trace", run.wall - trace.wall, "s",
             hops > 1 ? "hops times queries times period" : "queries times period", told,
             veltrin::atMost(kPathpingRatio)});
  table.add({"Its use of a processor", run.cpu, "s", "its time", run.wall,
             veltrin::atMost(kPathpingShare)});
  return run.well && trace.well;
}

int measureInside(const std::string& scenario, int runs) {
  const bool clean = scenario == "clean-15";
  veltrin::Table table(true);
  bool isWell = compareTraces(
      " to the end of `" + scenario + "`, median of " + std::to_string(runs), runs, clean, table);
  if (clean) {
    isWell &= measurePathping({}, 20, 10, kHops, table);
    isWell &= measurePathping({"-b"}, 20, 100, 1, table);
  }
  return isWell ? table.exitCode() : EXIT_FAILURE;
}

// Whether each of the tools runs at all.
int runOnce() {
  veltrin::Table table(false);
  bool well = true;
  for (const Words& words :
       {Words{VELTRIN_TRACERT, "-4", "-d", "target.example"},
        Words{VELTRIN_PATHPING, "-4", "-n", "-q", "1", "-p", "20", "target.example"},
        Words{"traceroute", "-4", "-I", "-n", "target.example"},
        Words{"mtr", "-4", "-r", "-c", "1", "-n", "target.example"}}) {
    const Run run = runProgram(words);
    const std::string name = words[0].substr(words[0].rfind('/') + 1);
    table.add({"One run of `" + name + "`", run.wall, "s", "", std::nullopt, std::nullopt});
    well = well && run.well && !run.text.empty();
  }
  return well ? table.exitCode() : EXIT_FAILURE;
}

// Measures in one scenario of the lab; the exit code.
int measureInTheLab(const char* program, const char* scenario, const std::string& runs) {
  const std::string line = std::string("'") + LAB_PROGRAM + "' " + scenario + " -- '" + program +
                           "' --inside " + scenario + " " + runs;
  const int status = std::system(line.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

}  // namespace

int main(int count, char** arguments) {
  const auto argument = [&](int at, const char* otherwise) {
    return std::string(count > at ? arguments[at] : otherwise);
  };
  if (argument(1, "") == "--inside") {
    if (argument(3, "") == "--smoke") return runOnce();
    return measureInside(argument(2, ""), std::atoi(argument(3, "1").c_str()));
  }
  if (argument(1, "") == "--smoke") return measureInTheLab(arguments[0], "clean-15", "--smoke");
  const std::string runs = std::to_string(std::max(std::atoi(argument(1, "11").c_str()), 1));
  int code = 0;
  for (const char* scenario : {"clean-15", "silent-15"}) {
    const int ended = measureInTheLab(arguments[0], scenario, runs);
    // What went wrong counts more than what fell short.
    if (code == EXIT_SUCCESS || ended == EXIT_FAILURE) code = ended == EXIT_SUCCESS ? code : ended;
  }
  return code;
}
