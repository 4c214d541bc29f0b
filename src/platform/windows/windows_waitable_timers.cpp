// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/windows_waitable_timers.h"

#include <windows.h>

#include "platform/windows/code_page.h"
#include "text/statement.h"

namespace veltrin {
namespace {

HANDLE native(WaitableTimers::Handle timer) { return reinterpret_cast<HANDLE>(timer); }

[[noreturn]] void failed(const char* call) {
  const DWORD error = GetLastError();
  throw StatementFailed(call, static_cast<int>(error));
}

}  // namespace

WaitableTimers::Handle WindowsWaitableTimers::create(const std::string& name,
                                                     std::uint32_t& lastError) {
  SetLastError(ERROR_SUCCESS);
  const HANDLE timer = CreateWaitableTimerA(nullptr, TRUE, toAnsi(name).c_str());
  if (timer == nullptr) failed("CreateWaitableTimer");
  lastError = GetLastError();
  return reinterpret_cast<Handle>(timer);
}

void WindowsWaitableTimers::set(Handle timer, DueTime due) {
  LARGE_INTEGER when{};
  when.QuadPart = due.units();
  if (SetWaitableTimer(native(timer), &when, 0, nullptr, nullptr, FALSE) == FALSE) {
    failed("SetWaitableTimer");
  }
}

bool WindowsWaitableTimers::waitOrMessage(Handle timer) {
  constexpr DWORD kAllKinds = 255;  // QS_ALLINPUT and what was added in front of it
  const HANDLE handle = native(timer);
  const DWORD patience = gate_.hasWaiting() ? 0 : INFINITE;
  const DWORD woken = MsgWaitForMultipleObjects(1, &handle, FALSE, patience, kAllKinds);
  if (woken == WAIT_FAILED) failed("MsgWaitForMultipleObjects");
  return woken == WAIT_OBJECT_0;
}

void WindowsWaitableTimers::close(Handle timer) { ::CloseHandle(native(timer)); }

}  // namespace veltrin
