#include <chrono>
#include <thread>

#include <QTimer>

#include "gtest/gtest.h"
#include "platform/qt/later.h"
#include "platform/qt/light_sleep.h"

namespace veltrin {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPause{5};
constexpr std::chrono::milliseconds kRescue{2000};

// Sleeps until a routine that another thread has called here has run.
template <class Sleep>
Clock::duration sleepUntilCalled(Sleep sleep) {
  Later later;
  bool isCalled = false;
  QTimer rescue;  // wakes whoever would sleep for ever
  rescue.start(kRescue);
  const auto begin = Clock::now();
  std::thread caller([&] {
    std::this_thread::sleep_for(kPause);  // the other has to be asleep
    later.call([&] { isCalled = true; });
  });
  while (!isCalled) sleep();
  const auto end = Clock::now();
  caller.join();
  return end - begin;
}

TEST(LightSleepTest, EndsWithWhatWasPosted) {
  LightSleep light;
  for (int round = 0; round < 20; ++round) {
    EXPECT_LT(sleepUntilCalled([&] { light.sleep(); }), kRescue / 2) << round;
  }
}

TEST(LightSleepTest, EndsWithWhatWasHandedInByASleepWithinIt) {
  LightSleep light;
  Later outer;
  bool hasSlept = false;
  QTimer rescue;
  rescue.start(kRescue);
  const auto begin = Clock::now();
  outer.call([&] {
    sleepUntilCalled([&] { light.sleep(); });
    hasSlept = true;
  });
  while (!hasSlept) light.sleep();
  EXPECT_LT(Clock::now() - begin, kRescue / 2);
}

}  // namespace
}  // namespace veltrin
