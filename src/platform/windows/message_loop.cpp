// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/message_loop.h"

#include <algorithm>
#include <windows.h>

namespace veltrin {

std::int64_t MessageLoop::milliseconds() const {
  return static_cast<std::int64_t>(GetTickCount64());
}

void MessageLoop::pump() {
  MSG message{};
  while (!gate().hasEnded() && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (message.message == WM_QUIT) {
      gate().end();
      return;
    }
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  timers().runDue();
}

// Messages that were seen but not taken count as well.
void MessageLoop::waitForEvent() {
  constexpr std::int64_t kLongestSleep = std::int64_t{24} * 60 * 60 * 1000;  // ms
  DWORD sleep = INFINITE;
  if (const auto next = timers().nextDue()) {
    sleep = static_cast<DWORD>(std::clamp<std::int64_t>(*next - milliseconds(), 0, kLongestSleep));
  }
  MsgWaitForMultipleObjectsEx(0, nullptr, sleep, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

}  // namespace veltrin
