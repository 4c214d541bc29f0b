// SPDX-License-Identifier: GPL-3.0-or-later
// Timers and messages of Windows as the pumping wait needs them.
#include <windows.h>

#include "gtest/gtest.h"
#include "platform/windows/message_loop.h"
#include "platform/windows/window_calls.h"
#include "platform/windows/windows_waitable_timers.h"
#include "text/statement.h"

namespace veltrin {
namespace {

constexpr DueTime kAtOnce{-1, -1};
constexpr DueTime kInAnHour{0, -9};  // about an hour in units of 100 ns

class WindowsWaitableTimersTest : public testing::Test {
 protected:
  MessageLoop events;
  WindowsWaitableTimers timers{events.gate()};
  std::uint32_t lastError = 1;
};

TEST_F(WindowsWaitableTimersTest, ATimerThatIsDueHasFired) {
  const auto timer = timers.create("fires", lastError);
  timers.set(timer, kAtOnce);

  EXPECT_TRUE(timers.waitOrMessage(timer));
  timers.close(timer);
}

TEST_F(WindowsWaitableTimersTest, ANewNameIsNoError) {
  const auto timer = timers.create("new", lastError);

  EXPECT_EQ(lastError, 0U);
  timers.close(timer);
}

TEST_F(WindowsWaitableTimersTest, ANameThatIsInUseIsTold) {
  const auto first = timers.create("shared", lastError);
  const auto second = timers.create("shared", lastError);

  EXPECT_EQ(lastError, kErrorAlreadyExists);
  timers.close(first);
  timers.close(second);
}

TEST_F(WindowsWaitableTimersTest, AMessageInterruptsTheWait) {
  const auto timer = timers.create("interrupted", lastError);
  timers.set(timer, kInAnHour);
  PostThreadMessageA(GetCurrentThreadId(), WM_APP, 0, 0);

  EXPECT_FALSE(timers.waitOrMessage(timer));
  timers.close(timer);
}

TEST_F(WindowsWaitableTimersTest, WhatWaitsAtTheGateInterruptsTheWait) {
  const auto timer = timers.create("gate", lastError);
  timers.set(timer, kInAnHour);
  events.gate().post([] {});

  EXPECT_FALSE(timers.waitOrMessage(timer));
  timers.close(timer);
}

TEST_F(WindowsWaitableTimersTest, AHandleThatIsNotOpenFailsWithTheSystemsNumber) {
  try {
    timers.set(0x7ffffff0, kAtOnce);
    FAIL() << "set a timer that is not there";
  } catch (const StatementFailed& failure) {
    EXPECT_EQ(failure.number(), ERROR_INVALID_HANDLE);
  }
}

TEST_F(WindowsWaitableTimersTest, TheLoopWakesForWhatIsPosted) {
  bool met = false;
  events.gate().post([&met] { met = true; });

  events.pumpUntil([&met] { return met; });

  EXPECT_TRUE(met);
}

TEST_F(WindowsWaitableTimersTest, AQuitMessageEndsTheProgram) {
  PostQuitMessage(0);

  EXPECT_THROW(events.DoEvents(), ProgramEnded);
}

// A system without a screen has no windows to find.
bool hasScreen() {
  const HWND window =
      CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  return window != nullptr && DestroyWindow(window) != FALSE;
}

TEST(WindowCalls, TheApplicationWindowIsFoundByItsTitle) {
  if (!hasScreen()) GTEST_SKIP() << "there is no screen";
  const ApplicationWindow window("A title that no other window has");

  EXPECT_NE(findWindowByTitle("A title that no other window has"), 0U);
}

TEST(WindowCalls, TheApplicationWindowIsNotFoundByATitleThatWasPutAside) {
  ApplicationWindow window("A title that is put aside");
  window.setTitle("Some Junk Title of a test");

  EXPECT_EQ(findWindowByTitle("A title that is put aside"), 0U);
}

}  // namespace
}  // namespace veltrin
