// SPDX-License-Identifier: GPL-3.0-or-later
// The command that runs inside the lab, in a process namespace of its own.
#pragma once

#include <signal.h>
#include <string>
#include <sys/types.h>
#include <vector>

#include "lab/descriptor.h"

namespace veltrin::lab {

// Exit codes when the command cannot be started, as shells use them.
inline constexpr int kExitNotExecutable = 126;
inline constexpr int kExitNotFound = 127;

// Added to a signal's number it is the exit code of a command ended by it.
inline constexpr int kExitSignal = 128;

// Exit code of a lab that cannot run on this machine.
inline constexpr int kExitCannotRun = 77;

// The signals that the lab waits for instead of dying of them: a child ended,
// hang-up, interrupt, quit, end. Blocks them for as long as it lives and in every
// process started meanwhile.
class WaitedSignals {
 public:
  // Throws CannotRun.
  WaitedSignals();
  WaitedSignals(const WaitedSignals&) = delete;
  WaitedSignals& operator=(const WaitedSignals&) = delete;
  ~WaitedSignals();

  const sigset_t& set() const { return set_; }

  // The mask as it was before.
  const sigset_t& before() const { return before_; }

  // Readable when one of them has come; reads give a signalfd_siginfo. Never
  // blocks.
  int descriptor() const { return descriptor_.get(); }

 private:
  sigset_t set_{};
  sigset_t before_{};
  Descriptor descriptor_;
};

// A started command.
struct StartedCommand {
  // The process that stands for the command outside. It passes signals on and
  // ends with the command, with its exit code as above.
  pid_t process = -1;

  // Held for as long as the command may run.
  Descriptor lifeline;
};

// Starts a command, looked up in PATH. When the process that stands for it ends,
// or this process does, everything inside ends too. Throws CannotRun.
StartedCommand startCommand(const std::vector<std::string>& command, const WaitedSignals& signals);

// The exit code for what a wait call tells about an ended process.
int exitCodeOf(int status);

// Whether a signal that a person's terminal sends to all of a job at once came
// from another process instead, and so has to be passed on. `code` is the
// signal's si_code.
bool cameFromProcess(int code);

}  // namespace veltrin::lab
