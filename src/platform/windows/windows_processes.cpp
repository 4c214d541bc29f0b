// SPDX-License-Identifier: GPL-3.0-or-later
#include <windows.h>
// The macro would rename the operation of this name.
#undef CreateProcess

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>

#include "platform/portable/command_limits.h"
#include "platform/portable/command_line.h"
#include "platform/windows/code_page.h"
#include "platform/windows/pool_call.h"
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

// The system's own program of the name with which a command line begins. Empty when the line
// names a folder too, or the system has no such program. CreateProcess alone looks into the
// program's folder and the current one first, where a download of anybody's may lie.
std::string systemProgram(const std::string& commandLine) {
  const std::string name = splitCommandLine(commandLine).front();
  if (name.empty() || name.find_first_of("\\/:") != std::string::npos) return {};
  std::array<char, MAX_PATH> folder{};
  std::array<char, MAX_PATH> file{};
  const UINT size = GetSystemDirectoryA(folder.data(), MAX_PATH);
  if (size == 0 || size >= MAX_PATH) return {};
  const DWORD found =
      SearchPathA(folder.data(), toAnsi(name).c_str(), ".exe", MAX_PATH, file.data(), nullptr);
  return found != 0 && found < MAX_PATH ? std::string(file.data()) : std::string();
}

// One read and what came of it.
struct Reading {
  std::array<char, kReadGrain> buffer{};
  DWORD taken = 0;
  bool succeeded = false;

  void from(HANDLE pipe) {
    succeeded = ::ReadFile(pipe, buffer.data(), kReadGrain, &taken, nullptr) != FALSE;
  }
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
  const std::string program = systemProgram(commandLine);
  SECURITY_ATTRIBUTES attributes = inheritable();
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
  startup.wShowWindow = SW_HIDE;
  startup.hStdOutput = native(writeEnd);
  startup.hStdError = native(writeEnd);
  PROCESS_INFORMATION information{};
  const BOOL result = CreateProcessA(program.empty() ? nullptr : program.c_str(), line.data(),
                                     &attributes, &attributes, TRUE, NORMAL_PRIORITY_CLASS, nullptr,
                                     nullptr, &startup, &information);
  if (result == FALSE) return 0;
  started.process = portable(information.hProcess);
  started.thread = portable(information.hThread);
  return 1;
}

bool WindowsProcesses::ReadFile(Handle readEnd, std::array<char, kReadGrain>& buffer,
                                std::size_t& count) {
  const HANDLE pipe = native(readEnd);
  const auto reading = std::make_shared<Reading>();
  const auto read = [pipe, reading] { reading->from(pipe); };
  const bool silent = whileSilent_ && waitingBytes(pipe) == 0;
  if (!silent || !callInPool(read, whileSilent_)) read();
  count = reading->succeeded ? reading->taken : 0;
  std::copy_n(reading->buffer.begin(), count, buffer.begin());
  return reading->succeeded;
}

void WindowsProcesses::fromCodePage(std::string& bytes) const { bytes = fromAnsi(bytes); }

void WindowsProcesses::CloseHandle(Handle handle) {
  if (handle != kNoHandle) ::CloseHandle(native(handle));
}

}  // namespace veltrin
