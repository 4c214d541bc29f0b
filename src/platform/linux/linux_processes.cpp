#include "platform/linux/linux_processes.h"

#include <algorithm>
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
#include <sys/types.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/portable/command_limits.h"
#include "platform/portable/command_line.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::array<std::string_view, 5> kTools = {"ping", "tracert", "pathping", "systeminfo",
                                                    "fsutil"};

// Where programs are looked for when PATH is not set.
constexpr std::string_view kUsualPath = "/usr/local/bin:/usr/bin:/bin";

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

bool isExecutable(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         access(path.c_str(), X_OK) == 0;
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

// The first executable file `name` in the folders of PATH. An empty folder means
// the current one.
std::string findInPath(const std::string& name) {
  const char* variable = std::getenv("PATH");
  std::string_view folders = variable == nullptr ? kUsualPath : std::string_view(variable);
  for (;;) {
    const auto end = folders.find(':');
    const std::string folder(folders.substr(0, end));
    std::string path = (folder.empty() ? "." : folder) + "/" + name;
    if (isExecutable(path)) return path;
    if (end == std::string_view::npos) return {};
    folders.remove_prefix(end + 1);
  }
}

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

// What a child starts with, in the form of posix_spawn. `ready` is false when
// the system has no memory for it.
class ChildSetup {
 public:
  explicit ChildSetup(int output) {
    posix_spawn_file_actions_init(&files_);
    posix_spawnattr_init(&attributes_);
    ready = addFiles(output) && addSignals();
  }
  ~ChildSetup() {
    posix_spawn_file_actions_destroy(&files_);
    posix_spawnattr_destroy(&attributes_);
  }
  ChildSetup(const ChildSetup&) = delete;
  ChildSetup& operator=(const ChildSetup&) = delete;

  const posix_spawn_file_actions_t* files() const { return &files_; }
  const posix_spawnattr_t* attributes() const { return &attributes_; }

  bool ready = false;

 private:
  // The order matters: everything is closed only after the write end was copied.
  bool addFiles(int output) {
    return posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0) == 0 &&
           posix_spawn_file_actions_adddup2(&files_, output, STDOUT_FILENO) == 0 &&
           posix_spawn_file_actions_adddup2(&files_, output, STDERR_FILENO) == 0 &&
           posix_spawn_file_actions_addclosefrom_np(&files_, kFirstOwnDescriptor) == 0;
  }

  bool addSignals() {
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    return posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF) ==
               0 &&
           posix_spawnattr_setsigmask(&attributes_, &none) == 0 &&
           posix_spawnattr_setsigdefault(&attributes_, &all) == 0;
  }

  posix_spawn_file_actions_t files_{};
  posix_spawnattr_t attributes_{};
};

// Starts `path`; 0 when that fails.
pid_t spawn(const std::string& path, std::vector<std::string> arguments, int output) {
  const ChildSetup setup(output);
  if (!setup.ready) return 0;
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  pid_t child = 0;
  const int error = posix_spawn(&child, path.c_str(), setup.files(), setup.attributes(),
                                pointers.data(), environ);
  return error == 0 ? child : 0;
}

void reap(pid_t child) {
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
}

// Starts `path` on a thread that lives as long as the child, then waits for it.
// The thread is there before the child is, so no child is ever without one.
// 0 when either cannot be made.
pid_t spawnReaped(const std::string& path, std::vector<std::string> arguments, int output) {
  std::promise<pid_t> promise;
  std::future<pid_t> child = promise.get_future();
  try {
    const SignalsBlocked blocked;
    std::thread([path, arguments = std::move(arguments), output,
                 promise = std::move(promise)]() mutable {
      const pid_t number = spawn(path, std::move(arguments), output);
      promise.set_value(number);
      if (number != 0) reap(number);
    }).detach();
  } catch (const std::system_error&) {
    return 0;
  }
  return child.get();
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
  const pid_t child = spawnReaped(path, std::move(arguments), static_cast<int>(writeEnd));
  if (child == 0) return 0;
  started.process = kNoHandle - child;
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
