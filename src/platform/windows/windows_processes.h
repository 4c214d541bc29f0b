// SPDX-License-Identifier: GPL-3.0-or-later
// Child processes and pipes of Windows.
#pragma once

// A system header may have made this name a macro, which would rename the
// operation of that name here.
#ifdef CreateProcess
#undef CreateProcess
#endif

#include <array>
#include <cstddef>
#include <string>

#include "platform/processes.h"
#include "platform/windows/pool_call.h"

namespace veltrin {

// The operations of the console runner, each by the system call of its name.
// Handles are the system's own.
class WindowsProcesses : public Processes {
 public:
  // `whileSilent` is called when the pipe is empty. Without it a read of a silent
  // pipe waits in the system.
  explicit WindowsProcesses(WhileSilent whileSilent = {});

  // Both ends can be inherited; the size of the buffer is left to the system.
  bool CreatePipe(Handle& readEnd, Handle& writeEnd) override;

  // The child is hidden, runs at normal priority, in the program's environment
  // and current folder. 0 when it cannot be started, and for a command line that
  // is empty, too long or holds a NUL.
  int CreateProcess(const std::string& commandLine, Handle writeEnd,
                    ProcessInformation& started) override;

  bool ReadFile(Handle readEnd, std::array<char, kReadGrain>& buffer, std::size_t& count) override;

  void fromCodePage(std::string& bytes) const override;

  void CloseHandle(Handle handle) override;

 private:
  WhileSilent whileSilent_;
};

}  // namespace veltrin
