// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_processes.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/linux/programs.h"
#include "platform/portable/command_limits.h"
#include "platform/portable/command_line.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::array<std::string_view, 5> kTools = {"ping", "tracert", "pathping", "systeminfo",
                                                    "fsutil"};

// First descriptor behind standard input, output and error.
constexpr int kFirstOwnDescriptor = 3;

void waitUntilReadable(int fd) {
  pollfd entry{fd, POLLIN, 0};
  poll(&entry, 1, -1);
}

// The same file under a descriptor that the three standard ones of a child
// cannot overwrite. -1 when there is none; `fd` is closed in any case but that
// in which it is the result.
int aboveStandard(int fd) {
  if (fd >= kFirstOwnDescriptor) return fd;
  const int moved = fcntl(fd, F_DUPFD_CLOEXEC, kFirstOwnDescriptor);
  close(fd);
  return moved;
}

void closeIfOpen(int fd) {
  if (fd >= 0) close(fd);
}

// The lower-case name of the console tool that `word` names, or nothing.
std::string toolName(std::string_view word) {
  const auto separator = word.find_last_of("/\\:");
  if (separator != std::string_view::npos) word.remove_prefix(separator + 1);
  std::string name = LCase(word);
  constexpr std::string_view kExtension = ".exe";
  if (name.size() > kExtension.size() && name.ends_with(kExtension)) {
    name.resize(name.size() - kExtension.size());
  }
  const bool known = std::find(kTools.begin(), kTools.end(), name) != kTools.end();
  return known ? name : std::string();
}

}  // namespace

LinuxProcesses::LinuxProcesses(std::string toolsFolder, WhileSilent whileSilent)
    : toolsFolder_(std::move(toolsFolder)),
      whileSilent_(whileSilent ? std::move(whileSilent) : waitUntilReadable) {}

bool LinuxProcesses::CreatePipe(Handle& readEnd, Handle& writeEnd) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  const int reading = aboveStandard(ends[0]);
  const int writing = aboveStandard(ends[1]);
  // Only the reader's end: what a child writes to must block as a pipe does.
  if (reading < 0 || writing < 0 || fcntl(reading, F_SETFL, O_NONBLOCK) != 0) {
    closeIfOpen(reading);
    closeIfOpen(writing);
    return false;
  }
  readEnd = reading;
  writeEnd = writing;
  return true;
}

int LinuxProcesses::CreateProcess(const std::string& commandLine, Handle writeEnd,
                                  ProcessInformation& started) {
  if (!acceptableCommandLine(commandLine) || writeEnd < 0) return 0;
  std::vector<std::string> arguments = splitCommandLine(commandLine);
  const std::string path = findProgram(arguments.front());
  if (path.empty()) return 0;
  Start what;
  what.path = path;
  what.arguments = std::move(arguments);
  what.output = static_cast<int>(writeEnd);
  const Started child = startProgram(std::move(what));
  if (child.process == 0) return 0;
  started.process = kNoHandle - child.process;
  started.thread = started.process;
  return 1;
}

bool LinuxProcesses::ReadFile(Handle readEnd, std::array<char, kReadGrain>& buffer,
                              std::size_t& count) {
  const int fd = static_cast<int>(readEnd);
  for (;;) {
    const ssize_t taken = read(fd, buffer.data(), buffer.size());
    if (taken > 0) {
      count = static_cast<std::size_t>(taken);
      return true;
    }
    if (taken < 0 && errno == EAGAIN) {
      whileSilent_(fd);
      continue;
    }
    if (taken < 0 && errno == EINTR) continue;
    count = 0;
    return false;
  }
}

void LinuxProcesses::CloseHandle(Handle handle) {
  if (handle >= 0) close(static_cast<int>(handle));
}

std::string LinuxProcesses::findProgram(const std::string& word) const {
  if (word.empty()) return {};
  const std::string tool = toolName(word);
  if (!tool.empty()) {
    std::string path = toolsFolder_ + "/" + tool;
    return isExecutable(path) ? path : std::string();
  }
  if (word.find('/') == std::string::npos) return findInPath(word);
  return isExecutable(word) ? word : std::string();
}

}  // namespace veltrin
