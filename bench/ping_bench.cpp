// SPDX-License-Identifier: GPL-3.0-or-later
// Compares a ping of ours with the system's own: how long one echo takes from the
// start of the process to its end, and whether both tell the same round trips.
//
//   ping_bench [host [ours [system's [starts [echoes]]]]]
//   ping_bench --smoke
//
// Both run in turn, so that what else the machine does falls on both alike. With --smoke
// each runs once, and only a failed run counts. Ends with 77 where this user may send no
// echoes.
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <netinet/in.h>
#include <optional>
#include <spawn.h>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "figures.h"
#include "table.h"

namespace {

using veltrin::median;

// The most that ours may take for one of the system's, and by how much the mean
// round trips may differ.
constexpr double kTargetRatio = 1.2;
constexpr double kTargetMilliseconds = 1.0;

struct Tool {
  std::string path;
  std::vector<std::string> arguments;  // for one echo
  std::vector<double> starts;          // microseconds of each process
  std::vector<double> trips;           // milliseconds of each echo, whole ones
};

// Starts the tool with its output on `file`; its process, or nothing.
std::optional<pid_t> start(const Tool& tool, int file) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, file, STDOUT_FILENO);
  std::vector<std::string> texts{tool.path};
  texts.insert(texts.end(), tool.arguments.begin(), tool.arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  pid_t process = 0;
  const int failure =
      posix_spawn(&process, tool.path.c_str(), &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return failure == 0 ? std::optional(process) : std::nullopt;
}

bool endedWell(pid_t process) {
  int status = 0;
  return waitpid(process, &status, 0) == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Adds the wall time of one process; false when it failed.
bool timeStart(Tool& tool, int nowhere) {
  const auto before = std::chrono::steady_clock::now();
  const auto process = start(tool, nowhere);
  if (!process || !endedWell(*process)) {
    return false;
  }
  const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - before;
  tool.starts.push_back(taken.count());
  return true;
}

std::string readAll(int file) {
  std::string text;
  std::array<char, 4096> part{};
  ssize_t size = 0;
  while ((size = read(file, part.data(), part.size())) > 0) {
    text.append(part.data(), static_cast<std::size_t>(size));
  }
  return text;
}

// Adds the round trip that one echo's output tells; false when it tells none.
bool readTrip(Tool& tool) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    return false;
  }
  const auto process = start(tool, ends[1]);
  close(ends[1]);
  const std::string text = readAll(ends[0]);
  close(ends[0]);
  if (!process || !endedWell(*process)) {
    return false;
  }
  if (text.find("time<1ms") != std::string::npos) {
    tool.trips.push_back(0);
    return true;
  }
  const std::size_t at = text.find("time=");
  if (at == std::string::npos) {
    return false;
  }
  tool.trips.push_back(std::floor(std::strtod(text.c_str() + at + 5, nullptr)));
  return true;
}

double mean(const std::vector<double>& values) {
  double sum = 0;
  for (const double value : values) {
    sum += value;
  }
  return sum / static_cast<double>(values.size());
}

void printTrips(const char* name, const std::vector<double>& trips) {
  std::printf("%-9s minimum %g ms, mean %.3f ms, maximum %g ms\n", name,
              *std::min_element(trips.begin(), trips.end()), mean(trips),
              *std::max_element(trips.begin(), trips.end()));
}

void report(const Tool& ours, const Tool& systems, veltrin::Table& table) {
  table.add({"`ping` with one echo, whole process, median of " +
                 std::to_string(ours.starts.size()) + " starts",
             median(ours.starts), "us", "the system's `ping`", median(systems.starts),
             veltrin::atMost(kTargetRatio)});
  const double difference = std::abs(mean(ours.trips) - mean(systems.trips));
  std::printf("round trips in whole ms of %zu echoes each:\n", ours.trips.size());
  printTrips("ours", ours.trips);
  printTrips("system's", systems.trips);
  table.add({"How far its mean round trip is from that of the system's, " +
                 std::to_string(ours.trips.size()) + " echoes",
             difference, "ms", "", std::nullopt, veltrin::atMost(kTargetMilliseconds)});
}

// Whether the kernel gives this user a socket for echoes, of the one kind or the other.
bool mayPing() {
  for (const int kind : {SOCK_DGRAM, SOCK_RAW}) {
    const int opened = socket(AF_INET, kind | SOCK_CLOEXEC, IPPROTO_ICMP);
    if (opened >= 0) {
      close(opened);
      return true;
    }
  }
  return false;
}

}  // namespace

int main(int count, char** arguments) {
  const bool smoke = count > 1 && std::string(arguments[1]) == "--smoke";
  veltrin::Table table(!smoke);
  if (!mayPing()) {
    table.cannot("`ping` with one echo", "the kernel gives this user no sockets for echoes");
    return table.exitCode();
  }
  const auto argument = [&](int at, const char* otherwise) {
    return std::string(count > at && !smoke ? arguments[at] : otherwise);
  };
  const std::string host = argument(1, "127.0.0.1");
  Tool ours{argument(2, VELTRIN_PING), {host, "-n", "1"}, {}, {}};
  Tool systems{argument(3, "/usr/bin/ping"), {"-c1", host}, {}, {}};
  const int starts = std::max(std::atoi(argument(4, smoke ? "1" : "300").c_str()), 1);
  const int echoes = std::max(std::atoi(argument(5, smoke ? "1" : "200").c_str()), 1);

  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  for (int i = 0; i < starts; ++i) {
    if (!timeStart(ours, nowhere) || !timeStart(systems, nowhere)) {
      std::fprintf(stderr, "a ping to %s failed\n", host.c_str());
      return 1;
    }
  }
  for (int i = 0; i < echoes; ++i) {
    if (!readTrip(ours) || !readTrip(systems)) {
      std::fprintf(stderr, "a ping to %s told no round trip\n", host.c_str());
      return 1;
    }
  }
  report(ours, systems, table);
  return table.exitCode();
}
