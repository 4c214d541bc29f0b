// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/programs.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <future>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <spawn.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace veltrin {
namespace {

// Where programs are looked for when PATH is not set.
constexpr std::string_view kUsualPath = "/usr/local/bin:/usr/bin:/bin";

// First descriptor behind standard input, output and error.
constexpr int kFirstOwnDescriptor = 3;

// All signals are kept away from the threads that are made while this lives, so
// that the program's own handlers run where they always did.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;

 private:
  sigset_t before_{};
};

// What a child starts with, in the form of posix_spawn. `error` is not 0 when the
// system has no memory for it.
class ChildSetup {
 public:
  explicit ChildSetup(const Start& what) {
    posix_spawn_file_actions_init(&files_);
    posix_spawnattr_init(&attributes_);
    error = addOutput(what.output);
    if (error == 0) error = addPlace(what.folder);
    if (error == 0) error = addSignals(what.ownSession);
  }
  ~ChildSetup() {
    posix_spawn_file_actions_destroy(&files_);
    posix_spawnattr_destroy(&attributes_);
  }
  ChildSetup(const ChildSetup&) = delete;
  ChildSetup& operator=(const ChildSetup&) = delete;

  const posix_spawn_file_actions_t* files() const { return &files_; }
  const posix_spawnattr_t* attributes() const { return &attributes_; }

  int error = 0;

 private:
  int addOutput(int output) {
    int failed = posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    for (const int number : {STDOUT_FILENO, STDERR_FILENO}) {
      if (failed != 0) break;
      failed = output < 0
                   ? posix_spawn_file_actions_addopen(&files_, number, "/dev/null", O_WRONLY, 0)
                   : posix_spawn_file_actions_adddup2(&files_, output, number);
    }
    return failed;
  }

  // Everything else is closed only after the output was copied.
  int addPlace(const std::string& folder) {
    const int failed = posix_spawn_file_actions_addclosefrom_np(&files_, kFirstOwnDescriptor);
    if (failed != 0 || folder.empty()) return failed;
    return posix_spawn_file_actions_addchdir_np(&files_, folder.c_str());
  }

  int addSignals(bool ownSession) {
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    const int flags =
        POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | (ownSession ? POSIX_SPAWN_SETSID : 0);
    int failed = posix_spawnattr_setflags(&attributes_, static_cast<short>(flags));
    if (failed == 0) failed = posix_spawnattr_setsigmask(&attributes_, &none);
    if (failed == 0) failed = posix_spawnattr_setsigdefault(&attributes_, &all);
    return failed;
  }

  posix_spawn_file_actions_t files_{};
  posix_spawnattr_t attributes_{};
};

Started spawn(Start what) {
  const ChildSetup setup(what);
  Started started{0, setup.error};
  if (started.error != 0) return started;
  std::vector<char*> pointers;
  pointers.reserve(what.arguments.size() + 1);
  for (std::string& argument : what.arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  started.error = posix_spawn(&started.process, what.path.c_str(), setup.files(),
                              setup.attributes(), pointers.data(), environ);
  if (started.error != 0) started.process = 0;
  return started;
}

// Ends a child that lives too long. Nobody has reaped it yet, so the number is still its
// own. A kernel without such descriptors, or with none left, lets it live.
void endInTime(pid_t child, int longest) {
  const auto descriptor = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
  if (descriptor < 0) return;
  pollfd entry{descriptor, POLLIN, 0};
  if (poll(&entry, 1, longest) == 0) kill(child, SIGKILL);
  close(descriptor);
}

void reap(pid_t child) {
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace

bool isExecutable(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         access(path.c_str(), X_OK) == 0;
}

std::string findInPath(const std::string& name) {
  const char* variable = std::getenv("PATH");
  std::string_view folders = variable == nullptr ? kUsualPath : std::string_view(variable);
  for (;;) {
    const auto end = folders.find(':');
    const std::string folder(folders.substr(0, end));
    // Any other is relative to the current folder, where a download of anybody's may lie.
    if (folder.starts_with('/')) {
      std::string path = folder + "/";
      path += name;
      if (isExecutable(path)) return path;
    }
    if (end == std::string_view::npos) return {};
    folders.remove_prefix(end + 1);
  }
}

// The thread is there before the child is, so no child is ever without one.
Started startProgram(Start what) {
  std::promise<Started> promise;
  std::future<Started> result = promise.get_future();
  try {
    const SignalsBlocked blocked;
    std::thread([what = std::move(what), promise = std::move(promise)]() mutable {
      const int longest = what.longest;
      const Started started = spawn(std::move(what));
      promise.set_value(started);
      if (started.process == 0) return;
      if (longest >= 0) endInTime(started.process, longest);
      reap(started.process);
    }).detach();
  } catch (const std::system_error& failure) {
    return {0, failure.code().value()};
  }
  return result.get();
}

}  // namespace veltrin
