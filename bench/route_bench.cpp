// SPDX-License-Identifier: GPL-3.0-or-later
// Compares tracert of ours with the system's own tools over the same paths of the
// lab, one on which every hop answers and one with silent hops, and pathping with the
// time that it tells before it counts.
//
//   route_bench [runs | --smoke]
//
// All run in turn, so that what else the machine does falls on all alike. Exit
// code 1 when a run failed or a target was missed, 77 when the lab cannot run. With
// --smoke each tool runs once, and only a failed run counts.
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <regex>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "figures.h"

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

// Prints a figure beside its target; whether it meets it.
bool meets(const std::string& name, double figure, double target, const char* unit) {
  const bool met = figure <= target;
  std::printf("  %-54s %8.3f%s  (target %.2f or less)%s\n", name.c_str(), figure, unit, target,
              met ? "" : "  MISSED");
  return met;
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

// The median time of ours for one of the other tool's; both in turn.
double timeRatio(int runs, const Words& ours, const Words& other, bool& well) {
  std::vector<double> oursTimes;
  std::vector<double> otherTimes;
  for (int i = 0; i < runs; ++i) {
    const Run first = runProgram(ours);
    const Run second = runProgram(other);
    well = well && first.well && second.well;
    oursTimes.push_back(first.wall);
    otherTimes.push_back(second.wall);
  }
  std::printf("  medians: ours %.3f s, %s %.3f s\n", median(oursTimes), other[0].c_str(),
              median(otherTimes));
  return median(oursTimes) / median(otherTimes);
}

bool compareTraces(int runs, bool clean) {
  bool well = true;
  const double most = clean ? kTracerouteRatio : kTracerouteRatioSilent;
  const Words numeric = {VELTRIN_TRACERT, "-4", "-d", "target.example"};
  bool met = meets(
      "tracert -d for traceroute -I -n",
      timeRatio(runs, numeric, {"traceroute", "-4", "-I", "-n", "target.example"}, well), most, "");
  met &= meets("tracert for traceroute -I, with names",
               timeRatio(runs, {VELTRIN_TRACERT, "-4", "target.example"},
                         {"traceroute", "-4", "-I", "target.example"}, well),
               most, "");
  const Run mtr = runProgram({"mtr", "-4", "-r", "-c", "3", "-n", "target.example"});
  const Run ours = runProgram(numeric);
  met &= meets("tracert -d for mtr -r -c 3 -n", ours.wall / mtr.wall, kMtrRatio, "");
  if (clean) {
    met &= meets("largest difference of round trips to mtr's",
                 largestDifference(tripsOfTracert(ours.text), tripsOfMtr(mtr.text)),
                 kTripDifference, " ms");
  }
  return met && well && mtr.well && ours.well;
}

// One run of pathping beside a trace; `hops` is how many periods a round takes.
bool measurePathping(const Words& options, int queries, int period, int hops) {
  const Run trace = runProgram({VELTRIN_TRACERT, "-4", "-d", "target.example"});
  Words words = {VELTRIN_PATHPING,      "-4", "-n", "-q", std::to_string(queries), "-p",
                 std::to_string(period)};
  words.insert(words.end(), options.begin(), options.end());
  words.emplace_back("target.example");
  const Run run = runProgram(words);
  std::string name = "pathping";
  for (std::size_t at = 3; at + 1 < words.size(); ++at) name += ' ' + words[at];
  const double told = static_cast<double>(queries) * period * hops / 1000;  // seconds
  bool met = meets(name + (hops > 1 ? " for hops x queries x period" : " for queries x period"),
                   (run.wall - trace.wall) / told, kPathpingRatio, "");
  met &= meets("its use of a processor", run.cpu / run.wall, kPathpingShare, "");
  return met && run.well && trace.well;
}

int measureInside(const std::string& scenario, int runs) {
  const bool clean = scenario == "clean-15";
  std::printf("%s, %d runs each in turn:\n", scenario.c_str(), runs);
  bool met = compareTraces(runs, clean);
  if (clean) {
    met &= measurePathping({}, 20, 10, kHops);
    met &= measurePathping({"-b"}, 20, 100, 1);
  }
  return met ? 0 : 1;
}

// Whether each of the tools runs at all.
int runOnce() {
  std::printf("clean-15, one run each:\n");
  bool well = true;
  for (const Words& words :
       {Words{VELTRIN_TRACERT, "-4", "-d", "target.example"},
        Words{VELTRIN_PATHPING, "-4", "-n", "-q", "1", "-p", "20", "target.example"},
        Words{"traceroute", "-4", "-I", "-n", "target.example"},
        Words{"mtr", "-4", "-r", "-c", "1", "-n", "target.example"}}) {
    const Run run = runProgram(words);
    std::printf("  %-60s %8.3f s%s\n", words[0].c_str(), run.wall, run.well ? "" : "  FAILED");
    well = well && run.well && !run.text.empty();
  }
  return well ? 0 : 1;
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
    code = ended == 0 ? code : ended;
  }
  return code;
}
