// SPDX-License-Identifier: GPL-3.0-or-later
// ShellExecute is not in the lean part of the system's header.
#undef WIN32_LEAN_AND_MEAN

#include "platform/windows/windows_shell.h"

#include <windows.h>

#include "platform/portable/command_limits.h"
#include "platform/windows/code_page.h"
#include "text/statement.h"

namespace veltrin {
namespace {

// ShellExecute tells of success by a number above this one.
constexpr INT_PTR kLastFailure = 32;

bool holdsNul(const std::string& text) { return text.find('\0') != std::string::npos; }

int failureOf(DWORD error) {
  const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
  return missing ? kFileNotFound : kInvalidProcedureCall;
}

}  // namespace

bool WindowsShell::execute(const std::string& verb, const std::string& file,
                           const std::string& parameters, const std::string& folder, int show) {
  if (holdsNul(verb) || holdsNul(file) || holdsNul(parameters) || holdsNul(folder)) return false;
  const std::string ansiVerb = toAnsi(verb);
  const std::string ansiFolder = toAnsi(folder);
  const HINSTANCE result = ShellExecuteA(nullptr, verb.empty() ? nullptr : ansiVerb.c_str(),
                                         toAnsi(file).c_str(), toAnsi(parameters).c_str(),
                                         folder.empty() ? nullptr : ansiFolder.c_str(), show);
  return reinterpret_cast<INT_PTR>(result) > kLastFailure;
}

void WindowsShell::run(const std::string& commandLine, int show) {
  if (!acceptableCommandLine(commandLine)) {
    throw StatementFailed("Invalid procedure call", kInvalidProcedureCall);
  }
  std::string line = toAnsi(commandLine);
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = static_cast<WORD>(show);
  PROCESS_INFORMATION started{};
  if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, NORMAL_PRIORITY_CLASS, nullptr,
                     nullptr, &startup, &started) == FALSE) {
    const DWORD error = GetLastError();
    throw StatementFailed(
        "The program cannot be started (error " + std::to_string(error) + "): " + commandLine,
        failureOf(error));
  }
  CloseHandle(started.hThread);
  CloseHandle(started.hProcess);
}

}  // namespace veltrin
