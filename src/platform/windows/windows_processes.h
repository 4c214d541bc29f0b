// Child processes and pipes of Windows.
#pragma once

// A system header may have made this name a macro, which would rename the
// operation of that name here.
#ifdef CreateProcess
#undef CreateProcess
#endif

#include <array>
#include <cstddef>
#include <functional>
#include <string>

#include "platform/processes.h"

namespace veltrin {

// The operations of the console runner, each by the system call of its name.
// Handles are the system's own.
class WindowsProcesses : public Processes {
 public:
  // Called when the pipe is empty, with an event (a HANDLE) that is signalled
  // when something was read. Should return when it is; it may wait for the event
  // and for window messages together.
  using WhileSilent = std::function<void(void* event)>;

  // Without `whileSilent` a read of a silent pipe waits in the system.
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
