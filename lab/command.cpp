// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/command.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <poll.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <utility>

namespace veltrin::lab {
namespace {

[[noreturn]] void complainAndExit(const char* what, int code) {
  std::fprintf(stderr, "lab: %s: %s\n", what, std::strerror(errno));
  _exit(code);
}

// Ends this process when the lab ends, or at once when it has ended already: the
// lab alone holds the other end of the pipe `alive`.
void dieWithTheLab(int alive) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  pollfd end{alive, 0, 0};
  if (poll(&end, 1, 0) != 0) _exit(kExitCannotRun);
}

[[noreturn]] void runCommand(const std::vector<std::string>& command, const sigset_t& mask) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  sigprocmask(SIG_SETMASK, &mask, nullptr);
  execvp(arguments[0], arguments.data());
  complainAndExit(arguments[0], errno == ENOENT ? kExitNotFound : kExitNotExecutable);
}

// Collects ended processes; ends with the command's exit code when it is among
// them.
void collect(pid_t command) {
  int status = 0;
  for (pid_t ended = waitpid(-1, &status, WNOHANG); ended > 0;
       ended = waitpid(-1, &status, WNOHANG)) {
    if (ended == command) _exit(exitCodeOf(status));
  }
}

// The life of the first process of the process namespace: when it ends, the
// kernel ends all others there.
[[noreturn]] void standForCommand(const std::vector<std::string>& command,
                                  const WaitedSignals& signals) {
  // Programs that look at processes are to see those of the lab.
  if (mount("proc", "/proc", "proc", MS_NOSUID | MS_NODEV | MS_NOEXEC, nullptr) != 0) {
    complainAndExit("cannot mount the lab's own /proc", kExitCannotRun);
  }
  const pid_t child = fork();
  if (child < 0) complainAndExit("cannot start a process", kExitCannotRun);
  if (child == 0) runCommand(command, signals.before());
  while (true) {
    siginfo_t signal{};
    if (sigwaitinfo(&signals.set(), &signal) < 0) continue;
    if (signal.si_signo == SIGCHLD) {
      collect(child);
    } else if (cameFromProcess(signal.si_code)) {
      kill(child, signal.si_signo);
    }
  }
}

}  // namespace

WaitedSignals::WaitedSignals() {
  sigemptyset(&set_);
  for (const int signal : {SIGCHLD, SIGHUP, SIGINT, SIGQUIT, SIGTERM}) sigaddset(&set_, signal);
  sigprocmask(SIG_BLOCK, &set_, &before_);
  descriptor_ = Descriptor(signalfd(-1, &set_, SFD_CLOEXEC | SFD_NONBLOCK));
  if (descriptor_.get() < 0) failWithErrno("cannot wait for signals");
}

WaitedSignals::~WaitedSignals() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

StartedCommand startCommand(const std::vector<std::string>& command, const WaitedSignals& signals) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) failWithErrno("cannot make a pipe");
  const Descriptor alive(ends[0]);
  Descriptor lifeline(ends[1]);
  // fork() cannot put the child alone into new namespaces; unshare() would bring
  // every later child and thread of the lab into them too.
  const long child = syscall(SYS_clone, CLONE_NEWPID | CLONE_NEWNS | SIGCHLD, 0, 0, 0, 0);
  if (child < 0) failWithErrno("cannot make a process namespace");
  if (child == 0) {
    lifeline.reset();
    dieWithTheLab(alive.get());
    standForCommand(command, signals);
  }
  return {static_cast<pid_t>(child), std::move(lifeline)};
}

int exitCodeOf(int status) {
  return WIFSIGNALED(status) ? kExitSignal + WTERMSIG(status) : WEXITSTATUS(status);
}

bool cameFromProcess(int code) { return code == SI_USER || code == SI_QUEUE; }

}  // namespace veltrin::lab
