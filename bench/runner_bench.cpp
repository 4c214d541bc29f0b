// SPDX-License-Identifier: GPL-3.0-or-later
// Throughput of the console runner's reads against the barest loop of reads of
// the same size, on the same child that prints 100 MB as fast as it can.
//
//   runner_bench [ROUNDS | --smoke]
//
// Both are measured alternately in each of ROUNDS rounds (7 by default); the
// best of each counts, as everything else on the machine can only slow them. The
// ratio is what the runner reaches of the bare loop; 0.8 or better is the aim.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>

#include "frame/DOSOutputs.h"
#include "platform/linux/linux_processes.h"
#include "support/simulation.h"
#include "table.h"

namespace {

using veltrin::LinuxProcesses;
using veltrin::Processes;

constexpr double kLeastRatio = 0.8;
constexpr std::uint64_t kUsualSize = 100'000'000;
constexpr int kUsualRounds = 7;
constexpr std::uint64_t kSmokeSize = 100'000;

using Buffer = std::array<char, veltrin::kReadGrain>;

// The bare loop's child and the end of the pipe from which its output comes.
class TalkingChild {
 public:
  TalkingChild(LinuxProcesses& processes, const std::string& commandLine) : processes_(processes) {
    Processes::Handle writeEnd = Processes::kNoHandle;
    Processes::ProcessInformation started;
    const bool runs = processes.CreatePipe(readEnd_, writeEnd) &&
                      processes.CreateProcess(commandLine, writeEnd, started) == 1;
    if (!runs) {
      std::fprintf(stderr, "runner_bench: cannot start %s\n", commandLine.c_str());
      std::exit(1);
    }
    processes.CloseHandle(writeEnd);
  }
  ~TalkingChild() { processes_.CloseHandle(readEnd_); }
  TalkingChild(const TalkingChild&) = delete;
  TalkingChild& operator=(const TalkingChild&) = delete;

  Processes::Handle readEnd() const { return readEnd_; }

 private:
  LinuxProcesses& processes_;
  Processes::Handle readEnd_ = Processes::kNoHandle;
};

// Reads that wait in the kernel, and nothing else.
std::uint64_t readBare(Processes::Handle readEnd) {
  fcntl(static_cast<int>(readEnd), F_SETFL, 0);  // made non-blocking for the runner
  Buffer buffer;
  std::uint64_t total = 0;
  for (;;) {
    const ssize_t taken = read(static_cast<int>(readEnd), buffer.data(), buffer.size());
    if (taken <= 0) return total;
    total += static_cast<std::uint64_t>(taken);
  }
}

// The console runner, as a window owns it, from the start of the child to the end
// of its output.
std::uint64_t readAsRunner(veltrin::DOSOutputs& runner, const std::string& commandLine) {
  return runner.ExecuteCommand(commandLine).size();
}

// Seconds that one reading of a child's whole output of `size` bytes takes.
template <class Reading>
double secondsOf(std::uint64_t size, Reading&& reading) {
  const auto start = std::chrono::steady_clock::now();
  const std::uint64_t total = reading();
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  if (total != size) {
    std::fprintf(stderr, "runner_bench: read %llu bytes\n", static_cast<unsigned long long>(total));
    std::exit(1);
  }
  return taken.count();
}

double megabytesPerSecond(std::uint64_t size, double seconds) {
  return static_cast<double>(size) / 1e6 / seconds;
}

// The line by which the talker prints so many bytes.
std::string talkerLine(std::uint64_t size) {
  const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  const std::string talker = folder.parent_path() / "tests" / "talker";
  return "\"" + talker + "\" bytes=" + std::to_string(size);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string word = argc > 1 ? argv[1] : std::to_string(kUsualRounds);
  const std::uint64_t size = word == "--smoke" ? kSmokeSize : kUsualSize;
  const int rounds = std::max(1, std::atoi(word.c_str()));
  const std::string commandLine = talkerLine(size);
  LinuxProcesses processes({});
  veltrin::Simulation simulation;
  const veltrin::Platform& rest = simulation.platform;
  veltrin::Platform platform{rest.events,   rest.timers,      rest.clock,       rest.desktop,
                             rest.files,    processes,        rest.profiles,    rest.registry,
                             rest.shell,    rest.environment, rest.sockets,     rest.counters,
                             rest.wmi,      rest.icmp,        rest.downloads,   rest.interfaces,
                             rest.printers, rest.drives,      rest.processList, "Veltrin"};
  veltrin::DOSOutputs window(platform);
  std::uint64_t shown = 0;
  window.ReceiveOutputs = [&shown](const std::string& chunk) { shown += chunk.size(); };
  double bare = 1e9;
  double runner = 1e9;
  for (int round = 0; round < rounds; ++round) {
    bare = std::min(bare, secondsOf(size, [&] {
                      const TalkingChild child(processes, commandLine);
                      return readBare(child.readEnd());
                    }));
    runner = std::min(runner, secondsOf(size, [&] { return readAsRunner(window, commandLine); }));
  }
  veltrin::Table table(word != "--smoke");
  table.add({"Text of a tool through the console runner, best of " + std::to_string(rounds),
             megabytesPerSecond(size, runner), "MB/s", "a bare loop of reads",
             megabytesPerSecond(size, bare), veltrin::atLeast(kLeastRatio)});
  return table.exitCode();
}
