// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/light_sleep.h"

#include <chrono>
#include <thread>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include "gtest/gtest.h"
#include "platform/qt/later.h"

namespace veltrin {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPause{5};
constexpr std::chrono::milliseconds kRescue{2000};

// Long for a loop that spins, which goes round thousands of times.
constexpr std::chrono::milliseconds kNap{100};
constexpr int kFewTimes = 5;

// Calls a routine at the end of a nap.
class NapTimer {
 public:
  template <class Routine>
  explicit NapTimer(Routine routine) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout(routine);
    timer_.start(kNap);
  }

 private:
  QTimer timer_;
};

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
  while (!isCalled) sleep();  // NOLINT(bugprone-infinite-loop): the sleep hands the call in
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

TEST(LightSleepTest, SleepsWhileNothingComes) {
  LightSleep light;
  bool isOver = false;
  const NapTimer nap([&] { isOver = true; });
  int sleeps = 0;
  while (!isOver) {
    light.sleep();
    ++sleeps;
  }
  EXPECT_LE(sleeps, kFewTimes);
}

TEST(LightSleepTest, ALoopWithinItSleepsWhileNothingComes) {
  LightSleep light;
  Later later;
  bool isOver = false;
  int blocks = 0;
  later.call([&] {
    bool isNapOver = false;
    const NapTimer nap([&] { isNapOver = true; });
    const auto counting =
        QObject::connect(QAbstractEventDispatcher::instance(),
                         &QAbstractEventDispatcher::aboutToBlock, [&] { ++blocks; });
    while (!isNapOver) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(counting);
    later.call([&] { isOver = true; });  // wakes the outer sleep
  });
  while (!isOver) light.sleep();
  EXPECT_GE(blocks, 1);
  EXPECT_LE(blocks, kFewTimes);
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
