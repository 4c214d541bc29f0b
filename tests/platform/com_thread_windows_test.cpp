// SPDX-License-Identifier: GPL-3.0-or-later
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <objbase.h>
#include <windows.h>

#include "platform/windows/com_thread.h"
#include "text/statement.h"

namespace veltrin {
namespace {

constexpr std::chrono::milliseconds kNoTime{0};

// An event that a call waits for.
class Gong {
 public:
  ~Gong() { CloseHandle(event_); }
  void beat() { SetEvent(event_); }
  void await() { WaitForSingleObject(event_, INFINITE); }

 private:
  HANDLE event_ = CreateEventA(nullptr, TRUE, FALSE, nullptr);
};

// The apartment of the thread that asks; APTTYPE_CURRENT where there is none.
APTTYPE apartment() {
  APTTYPE type = APTTYPE_CURRENT;
  APTTYPEQUALIFIER qualifier{};
  return SUCCEEDED(CoGetApartmentType(&type, &qualifier)) ? type : APTTYPE_CURRENT;
}

TEST(ComThreadTest, CallsAreMadeOnAThreadOfTheirOwn) {
  ComThread thread;
  const DWORD first = thread.call([] { return GetCurrentThreadId(); });
  EXPECT_NE(first, GetCurrentThreadId());
  EXPECT_EQ(thread.call([] { return GetCurrentThreadId(); }), first);
}

TEST(ComThreadTest, CallsAreMadeInTheMultithreadedApartment) {
  ComThread thread;
  EXPECT_EQ(thread.call(apartment), APTTYPE_MTA);
}

TEST(ComThreadTest, LeavesTheApartmentOfTheCallerAlone) {
  ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
  { ComThread().call(apartment); }
  const APTTYPE type = apartment();
  EXPECT_TRUE(type == APTTYPE_STA || type == APTTYPE_MAINSTA) << type;
  CoUninitialize();
}

TEST(ComThreadTest, ACallThrowsWhatItsWorkThrows) {
  ComThread thread;
  try {
    thread.call([] { throw StatementFailed("It is late", 77); });
    FAIL() << "nothing was thrown";
  } catch (const StatementFailed& failure) {
    EXPECT_STREQ(failure.what(), "It is late");
    EXPECT_EQ(failure.number(), 77);
  }
}

TEST(ComThreadTest, AThreadWhoseWorkThrewTakesTheNext) {
  ComThread thread;
  EXPECT_THROW(thread.call([] { throw StatementFailed("It is late"); }), StatementFailed);
  EXPECT_EQ(thread.call([] { return 5; }), 5);
}

TEST(ComThreadTest, WorksAreDoneInTheirOrder) {
  ComThread thread;
  auto text = std::make_shared<std::string>();
  for (const char letter : {'a', 'b', 'c'}) thread.post([=] { *text += letter; });
  thread.call([=] { *text += 'd'; });
  EXPECT_EQ(*text, "abcd");
}

TEST(ComThreadTest, WhoeverWaitsIsToldWithAnEventThatIsSignalledAtTheEnd) {
  Gong gong;
  int silences = 0;
  bool wasSilent = false;
  ComThread thread([&](void* event) {
    ++silences;
    wasSilent = WaitForSingleObject(event, 0) == WAIT_TIMEOUT;
    gong.beat();
    EXPECT_EQ(WaitForSingleObject(event, INFINITE), WAIT_OBJECT_0);
  });
  thread.call([&] { gong.await(); });
  EXPECT_EQ(silences, 1);
  EXPECT_TRUE(wasSilent);
}

TEST(ComThreadTest, ACallWaitsForItsEndWhoeverReturnsEarlier) {
  Gong gong;
  ComThread thread([&](void*) { gong.beat(); });
  EXPECT_EQ(thread.call([&] {
    gong.await();
    return 9;
  }),
            9);
}

// Tells on which thread it ended.
struct Ending {
  explicit Ending(std::shared_ptr<std::atomic<DWORD>> told) : thread(std::move(told)) {}
  ~Ending() { *thread = GetCurrentThreadId(); }
  std::shared_ptr<std::atomic<DWORD>> thread;
};

TEST(ComThreadTest, WhatACallReturnsThatNobodyWaitsForEndsOnTheThread) {
  auto ended = std::make_shared<std::atomic<DWORD>>(0);
  bool leaves = true;
  ComThread thread([&](void* event) {
    WaitForSingleObject(event, INFINITE);
    if (leaves) throw StatementFailed("Gone");
  });
  EXPECT_THROW(thread.call([ended] { return std::make_unique<Ending>(ended); }), StatementFailed);
  leaves = false;
  const DWORD home = thread.call([] { return GetCurrentThreadId(); });
  EXPECT_EQ(ended->load(), home);
}

TEST(ComThreadTest, TheEndWaitsForWhatWasPosted) {
  auto done = std::make_shared<std::atomic<int>>(0);
  {
    ComThread thread;
    for (int work = 0; work < 100; ++work) thread.post([done] { ++*done; });
  }
  EXPECT_EQ(done->load(), 100);
}

TEST(ComThreadTest, TheEndLeavesAWorkThatHangsToItself) {
  auto gong = std::make_shared<Gong>();
  auto back = std::make_shared<Gong>();
  auto hasReturned = std::make_shared<std::atomic<bool>>(false);
  {
    ComThread thread({}, kNoTime);
    thread.post([=] {
      gong->await();
      *hasReturned = true;
      back->beat();
    });
  }
  EXPECT_FALSE(hasReturned->load());
  gong->beat();  // only now, and it still finds all that it needs
  back->await();
}

}  // namespace
}  // namespace veltrin
