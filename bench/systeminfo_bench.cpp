// How long our systeminfo takes from the start of its process to its end, with its
// text read through a pipe as the windows read it.
//
//   systeminfo_bench [tool [runs] | --smoke]
//
// Exit code 1 when a run failed or the target was missed, with --smoke when the one run
// failed.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr double kTargetMilliseconds = 150;
constexpr int kUsualRuns = 200;

std::size_t readAll(int file) {
  std::array<char, 4096> part{};
  std::size_t total = 0;
  ssize_t size = 0;
  while ((size = read(file, part.data(), part.size())) > 0) {
    total += static_cast<std::size_t>(size);
  }
  return total;
}

// Milliseconds of one run; nothing when it failed or printed nothing.
std::optional<double> timeRun(std::string tool) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    return std::nullopt;
  }
  const auto before = std::chrono::steady_clock::now();
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  std::array<char*, 2> arguments{tool.data(), nullptr};
  pid_t process = 0;
  const int failure =
      posix_spawn(&process, tool.c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  const std::size_t size = failure == 0 ? readAll(ends[0]) : 0;
  close(ends[0]);
  int status = 0;
  if (failure != 0 || waitpid(process, &status, 0) != process || !WIFEXITED(status) ||
      WEXITSTATUS(status) != 0 || size == 0) {
    return std::nullopt;
  }
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - before;
  return taken.count();
}

}  // namespace

int main(int count, char** arguments) {
  const bool smoke = count > 1 && std::string(arguments[1]) == "--smoke";
  const std::string tool = count > 1 && !smoke ? arguments[1] : VELTRIN_SYSTEMINFO;
  const int usual = smoke ? 1 : kUsualRuns;
  const int runs = std::max(count > 2 ? std::atoi(arguments[2]) : usual, 1);
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const auto time = timeRun(tool);
    if (!time) {
      std::fprintf(stderr, "a run of %s failed\n", tool.c_str());
      return 1;
    }
    times.push_back(*time);
  }
  std::sort(times.begin(), times.end());
  const double median = times[times.size() / 2];
  std::printf("whole process, %zu runs: minimum %.1f ms, median %.1f ms, maximum %.1f ms\n",
              times.size(), times.front(), median, times.back());
  std::printf("target for the median: under %.0f ms\n", kTargetMilliseconds);
  return smoke || median < kTargetMilliseconds ? 0 : 1;
}
