// SPDX-License-Identifier: GPL-3.0-or-later
// What a running program holds, as Linux tells it under /proc.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/types.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace veltrin {

struct Holding {
  long resident = 0;  // KiB of memory (proc(5), smaps_rollup, Rss)
  long share = 0;     // KiB: what is shared counts in parts (Pss)
  long own = 0;       // KiB of memory that no file stands behind: heap and stacks (Anonymous)
  long handles = 0;   // open file descriptors
  long threads = 0;
  long children = 0;
  double processor = 0;  // s it has run so far, its children's not counted
};

inline std::string textOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// The number behind a name at the start of a line; 0 when there is none.
inline long figureAfter(const std::string& text, const std::string& name) {
  const std::size_t at = ("\n" + text).find("\n" + name);
  return at == std::string::npos ? 0 : std::strtol(text.c_str() + at + name.size(), nullptr, 10);
}

inline long entriesOf(const std::filesystem::path& folder) {
  std::error_code failure;
  std::filesystem::directory_iterator entries(folder, failure);
  return failure ? 0 : static_cast<long>(std::distance(begin(entries), end(entries)));
}

// Words of /proc/PID/task/PID/children.
inline long childrenOf(const std::filesystem::path& process, pid_t pid) {
  const std::string children = textOf(process / "task" / std::to_string(pid) / "children");
  return std::count(children.begin(), children.end(), ' ');
}

// User and system time, the 14th and 15th field, of which the 2nd ends with the last bracket.
inline double processorTimeOf(const std::filesystem::path& process) {
  constexpr int kBetween = 12;  // blanks from the bracket to the 14th field
  const std::string text = textOf(process / "stat");
  std::size_t at = text.rfind(')');
  for (int blank = 0; blank < kBetween && at != std::string::npos; ++blank) {
    at = text.find(' ', at + 1);
  }
  if (at == std::string::npos) return 0;
  char* end = nullptr;
  const long user = std::strtol(text.c_str() + at, &end, 10);
  const long system = std::strtol(end, nullptr, 10);
  return static_cast<double>(user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

// What a program holds between two of its tools: the least of several glances in two seconds,
// as a tool that runs just then is a child, with a pipe for what it prints.
inline Holding holdingOf(pid_t pid) {
  constexpr int kGlances = 40;
  constexpr std::chrono::milliseconds kApart{50};
  const std::filesystem::path process = "/proc/" + std::to_string(pid);
  Holding holding;
  for (int glance = 0; glance < kGlances; ++glance) {
    if (glance != 0) std::this_thread::sleep_for(kApart);
    const auto keepLeast = [glance](long& least, long now) {
      least = glance == 0 ? now : std::min(least, now);
    };
    keepLeast(holding.handles, entriesOf(process / "fd"));
    keepLeast(holding.threads, entriesOf(process / "task"));
    keepLeast(holding.children, childrenOf(process, pid));
  }
  const std::string memory = textOf(process / "smaps_rollup");
  holding.resident = figureAfter(memory, "Rss:");
  holding.share = figureAfter(memory, "Pss:");
  holding.own = figureAfter(memory, "Anonymous:");
  holding.processor = processorTimeOf(process);
  return holding;
}

}  // namespace veltrin
