// SPDX-License-Identifier: GPL-3.0-or-later
// Runs of other programs.
#pragma once

#include <array>
#include <cstddef>
#include <fcntl.h>
#include <optional>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "figures.h"

namespace veltrin {

struct ToolRun {
  Cost cost;
  std::size_t bytes = 0;  // of what it printed
};

// From the start of a program to its end, its text being read through a pipe; its own messages
// are lost. Nothing when there is no such program, or it failed.
inline std::optional<ToolRun> runTool(std::vector<std::string> words) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  ToolRun run;
  int status = 0;
  bool isOver = false;
  run.cost = costOf([&] {
    pid_t process = 0;
    const int failure =
        posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    close(ends[1]);
    std::array<char, 4096> part{};
    for (ssize_t size = 0; failure == 0 && (size = read(ends[0], part.data(), part.size())) > 0;) {
      run.bytes += static_cast<std::size_t>(size);
    }
    isOver = failure == 0 && waitpid(process, &status, 0) == process;
  });
  posix_spawn_file_actions_destroy(&actions);
  close(ends[0]);
  const bool isWell = isOver && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  return isWell ? std::optional(run) : std::nullopt;
}

}  // namespace veltrin
