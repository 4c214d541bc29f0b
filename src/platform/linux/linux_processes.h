// SPDX-License-Identifier: GPL-3.0-or-later
// Child processes and pipes of Linux.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>

#include "platform/processes.h"

namespace veltrin {

// The operations of the console runner by pipe2, posix_spawn and read.
//
// Handles of pipes are descriptors. A child's handles are numbers below
// kNoHandle made from its process number: nothing is held open for it, and
// closing one does nothing; nobody has to wait for a child.
class LinuxProcesses : public Processes {
 public:
  // Called when the pipe is empty; returns when `readableFd` can be read. To
  // return early does no harm: it is called again while the pipe is empty.
  using WhileSilent = std::function<void(int readableFd)>;

  // `toolsFolder` holds the console tools that stand in for those of Windows.
  // Without `whileSilent` a silent child is waited for in the kernel.
  explicit LinuxProcesses(std::string toolsFolder, WhileSilent whileSilent = {});

  // Both ends are closed in every child; only reads are non-blocking. False when
  // no descriptor is left.
  bool CreatePipe(Handle& readEnd, Handle& writeEnd) override;

  // The child has three descriptors: /dev/null and twice the write end. Signals
  // are as in a fresh login. 0 when the child cannot be started: no such program,
  // a folder, not executable, a command line that is empty, too long or holds a
  // NUL, or a system without room for another process.
  int CreateProcess(const std::string& commandLine, Handle writeEnd,
                    ProcessInformation& started) override;

  bool ReadFile(Handle readEnd, std::array<char, kReadGrain>& buffer, std::size_t& count) override;

  void CloseHandle(Handle handle) override;

  // The path of the program that a command line's first word names; empty when
  // there is none that can be executed. The word ping, tracert, pathping,
  // systeminfo or fsutil in any case, with or without a folder of either style
  // and ".exe", means the console tool. Another word with a slash is a path, and
  // one without is looked for in PATH.
  std::string findProgram(const std::string& word) const;

 private:
  std::string toolsFolder_;
  WhileSilent whileSilent_;
};

}  // namespace veltrin
