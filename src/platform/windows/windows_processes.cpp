#include <windows.h>
// The macro would rename the operation of this name.
#undef CreateProcess

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/portable/command_limits.h"
#include "platform/windows/code_page.h"
#include "platform/windows/windows_processes.h"

namespace veltrin {
namespace {

// Lets the child and its threads, or both ends of a pipe, be inherited.
SECURITY_ATTRIBUTES inheritable() {
  SECURITY_ATTRIBUTES attributes{};
  attributes.nLength = sizeof attributes;
  attributes.bInheritHandle = TRUE;
  return attributes;
}

HANDLE native(Processes::Handle handle) {
  return reinterpret_cast<HANDLE>(handle);  // NOLINT: the system's handles are pointers
}

Processes::Handle portable(HANDLE handle) { return reinterpret_cast<Processes::Handle>(handle); }

// Bytes that can be read at once; 0 also for a pipe that has ended.
DWORD waitingBytes(HANDLE pipe) {
  DWORD waiting = 0;
  return PeekNamedPipe(pipe, nullptr, 0, nullptr, &waiting, nullptr) != FALSE ? waiting : 0;
}

// A read that waits on a thread of the system's pool. The thread and its starter
// share it, so that it outlives whichever is done first.
class PendingRead {
 public:
  explicit PendingRead(HANDLE pipe) : pipe_(pipe) {}
  ~PendingRead() {
    if (done_ != nullptr) ::CloseHandle(done_);
  }
  PendingRead(const PendingRead&) = delete;
  PendingRead& operator=(const PendingRead&) = delete;

  // Starts a read; nothing when the system has no event or thread for it.
  static std::shared_ptr<PendingRead> start(HANDLE pipe) {
    auto pending = std::make_shared<PendingRead>(pipe);
    pending->done_ = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    if (pending->done_ == nullptr) return nullptr;
    auto share = std::make_unique<std::shared_ptr<PendingRead>>(pending);
    if (QueueUserWorkItem(run, share.get(), WT_EXECUTELONGFUNCTION) == FALSE) return nullptr;
    static_cast<void>(share.release());  // now the thread's
    return pending;
  }

  HANDLE done() const { return done_; }

  // What was read. Waits until the read is done.
  bool take(std::array<char, kReadGrain>& buffer, DWORD& taken) const {
    WaitForSingleObject(done_, INFINITE);
    std::copy_n(buffer_.begin(), taken_, buffer.begin());
    taken = taken_;
    return succeeded_;
  }

 private:
  static DWORD CALLBACK run(void* share) {
    const std::unique_ptr<std::shared_ptr<PendingRead>> owned(
        static_cast<std::shared_ptr<PendingRead>*>(share));
    PendingRead& read = **owned;
    read.succeeded_ =
        ::ReadFile(read.pipe_, read.buffer_.data(), kReadGrain, &read.taken_, nullptr) != FALSE;
    SetEvent(read.done_);
    return 0;
  }

  HANDLE pipe_;
  HANDLE done_ = nullptr;
  std::array<char, kReadGrain> buffer_{};
  DWORD taken_ = 0;
  bool succeeded_ = false;
};

}  // namespace

WindowsProcesses::WindowsProcesses(WhileSilent whileSilent)
    : whileSilent_(std::move(whileSilent)) {}

bool WindowsProcesses::CreatePipe(Handle& readEnd, Handle& writeEnd) {
  SECURITY_ATTRIBUTES attributes = inheritable();
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
  if (::CreatePipe(&reading, &writing, &attributes, 0) == FALSE) return false;
  readEnd = portable(reading);
  writeEnd = portable(writing);
  return true;
}

int WindowsProcesses::CreateProcess(const std::string& commandLine, Handle writeEnd,
                                    ProcessInformation& started) {
  if (!acceptableCommandLine(commandLine)) return 0;
  std::string line = toAnsi(commandLine);
  SECURITY_ATTRIBUTES attributes = inheritable();
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
  startup.wShowWindow = SW_HIDE;
  startup.hStdOutput = native(writeEnd);
  startup.hStdError = native(writeEnd);
  PROCESS_INFORMATION information{};
  const BOOL result =
      CreateProcessA(nullptr, line.data(), &attributes, &attributes, TRUE, NORMAL_PRIORITY_CLASS,
                     nullptr, nullptr, &startup, &information);
  if (result == FALSE) return 0;
  started.process = portable(information.hProcess);
  started.thread = portable(information.hThread);
  return 1;
}

bool WindowsProcesses::ReadFile(Handle readEnd, std::array<char, kReadGrain>& buffer,
                                std::size_t& count) {
  const HANDLE pipe = native(readEnd);
  std::shared_ptr<PendingRead> pending;
  if (whileSilent_ && waitingBytes(pipe) == 0) pending = PendingRead::start(pipe);
  DWORD taken = 0;
  bool succeeded = false;
  if (pending != nullptr) {
    whileSilent_(pending->done());
    succeeded = pending->take(buffer, taken);
  } else {
    succeeded = ::ReadFile(pipe, buffer.data(), kReadGrain, &taken, nullptr) != FALSE;
  }
  count = succeeded ? taken : 0;
  return succeeded;
}

void WindowsProcesses::fromCodePage(std::string& bytes) const { bytes = fromAnsi(bytes); }

void WindowsProcesses::CloseHandle(Handle handle) {
  if (handle != kNoHandle) ::CloseHandle(native(handle));
}

}  // namespace veltrin
