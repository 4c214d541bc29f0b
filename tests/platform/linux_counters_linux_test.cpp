// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <unistd.h>

#include "platform/linux/linux_counters.h"
#include "tests/platform/scratch_folder.h"

namespace veltrin {
namespace {

std::string hostName() {
  std::array<char, 256> name{};
  EXPECT_EQ(gethostname(name.data(), name.size() - 1), 0);
  return name.data();
}

// With a process file system of the test's own.
class LinuxCountersTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(counters_.PdhOpenQuery(query_), 0); }

  Counters::Counter add(const std::string& path) {
    Counters::Counter counter = 0;
    EXPECT_EQ(counters_.PdhVbAddCounter(query_, path, counter), 0) << path;
    return counter;
  }

  std::int32_t statusOfAdding(const std::string& path) {
    Counters::Counter counter = 0;
    return counters_.PdhVbAddCounter(query_, path, counter);
  }

  // A second after the time before.
  std::int32_t collect(const std::string& stat) {
    proc_.fill("stat", stat);
    now_ += std::chrono::seconds(1);
    return counters_.PdhCollectQueryData(query_);
  }

  double value(Counters::Counter counter) {
    return counters_.PdhVbGetDoubleCounterValue(counter, status_);
  }

  // Two processors since the start of the system: user, nice, system, idle, iowait,
  // irq, softirq, steal, guest, guest_nice.
  static constexpr const char* kBefore =
      "cpu  1000 10 500 8000 200 5 15 0 300 0\n"
      "cpu0 400 10 300 4000 100 5 10 0 100 0\n"
      "cpu1 600 0 200 4000 100 0 5 0 200 0\n"
      "intr 123456 7 8 9\n"
      "ctxt 998877\n"
      "btime 1700000000\n"
      "processes 4321\n";

  ScratchFolder proc_;
  CounterService::Moment now_;
  LinuxCounters counters_{(proc_.fill("stat", kBefore), proc_.folder().string()),
                          std::make_shared<AdapterNames>(), [this] { return now_; }};
  Counters::Query query_ = 0;
  std::int32_t status_ = -1;
};

TEST_F(LinuxCountersTest, TellsTheShareOfTimeInWhichAProcessorWasIdle) {
  const auto idle = add("\\\\" + hostName() + "\\Processor(0)\\% Idle Time");
  ASSERT_EQ(collect(kBefore), 0);

  // 100 ticks: 10 user, 5 system, 70 idle, 5 that waited for a disk, 10 softirq.
  ASSERT_EQ(collect("cpu  1100 10 600 8700 250 5 35 0 300 0\n"
                    "cpu0 410 10 305 4070 105 5 20 0 100 0\n"
                    "cpu1 600 0 200 4000 100 0 5 0 200 0\n"),
            0);

  EXPECT_DOUBLE_EQ(value(idle), 75);
  EXPECT_EQ(status_, 0);
}

TEST_F(LinuxCountersTest, TellsTheShareOfTimeInWhichAllProcessorsTogetherWereIdle) {
  const auto idle = add("\\Processor(_Total)\\% Idle Time");
  const auto busy = add("\\Processor(_Total)\\% Processor Time");
  ASSERT_EQ(collect(kBefore), 0);

  // 200 ticks, of which 50 idle; the 90 of the guests are within those of user.
  ASSERT_EQ(collect("cpu  1100 10 550 8050 200 5 15 0 390 0\n"), 0);

  EXPECT_DOUBLE_EQ(value(idle), 25);
  EXPECT_DOUBLE_EQ(value(busy), 75);
}

TEST_F(LinuxCountersTest, CountsTimeThatTheHostTookAwayAsBusy) {
  const auto idle = add("\\Processor(_Total)\\% Idle Time");
  ASSERT_EQ(collect(kBefore), 0);

  ASSERT_EQ(collect("cpu  1000 10 500 8060 200 5 15 40 300 0\n"), 0);

  EXPECT_DOUBLE_EQ(value(idle), 60);
}

TEST_F(LinuxCountersTest, ReadsTheFourColumnsOfAnOldKernel) {
  const auto idle = add("\\Processor(_Total)\\% Idle Time");
  ASSERT_EQ(collect("cpu 100 0 100 800\n"), 0);

  ASSERT_EQ(collect("cpu 110 0 110 880\n"), 0);

  EXPECT_DOUBLE_EQ(value(idle), 80);
}

TEST_F(LinuxCountersTest, HasNoShareAfterTheFirstSample) {
  const auto idle = add("\\Processor(1)\\% Idle Time");

  ASSERT_EQ(collect(kBefore), 0);

  EXPECT_EQ(value(idle), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
}

TEST_F(LinuxCountersTest, KnowsItsMachineInAnyCase) {
  std::string name = hostName();
  for (char& c : name)
    c = static_cast<char>(std::isupper(c) != 0 ? std::tolower(c) : std::toupper(c));
  EXPECT_EQ(statusOfAdding("\\\\" + name + "\\Processor(0)\\% Idle Time"), 0);
}

TEST_F(LinuxCountersTest, KnowsNoOtherMachine) {
  EXPECT_EQ(statusOfAdding("\\\\" + hostName() + "x\\Processor(0)\\% Idle Time"), kPdhNoMachine);
}

TEST_F(LinuxCountersTest, KnowsNoProcessorThatIsNotThere) {
  EXPECT_EQ(statusOfAdding("\\Processor(2)\\% Idle Time"), kPdhNoInstance);
}

TEST_F(LinuxCountersTest, KnowsNoProcessorWhereTheSystemTellsNothing) {
  std::filesystem::remove(proc_.folder() / "stat");
  EXPECT_EQ(statusOfAdding("\\Processor(0)\\% Idle Time"), kPdhNoInstance);
}

TEST_F(LinuxCountersTest, HasNoDataOnceTheSystemTellsNothing) {
  add("\\Processor(0)\\% Idle Time");
  EXPECT_EQ(collect(""), kPdhNoData);
}

TEST_F(LinuxCountersTest, TakesWhatItCannotReadForNothing) {
  const auto idle = add("\\Processor(0)\\% Idle Time");
  ASSERT_EQ(collect("cpu\ncpu0 garbage\n\n\xFF"), 0);
  ASSERT_EQ(collect("cpu0 0 0 25 75\n"), 0);
  EXPECT_DOUBLE_EQ(value(idle), 75);
}

// With the process file system of this machine.
class RealCountersTest : public testing::Test {
 protected:
  LinuxCounters counters_;
};

TEST_F(RealCountersTest, TellTheIdleTimeOfEveryProcessorAndOfAll) {
  Counters::Query query = 0;
  ASSERT_EQ(counters_.PdhOpenQuery(query), 0);
  std::vector<Counters::Counter> idle;
  std::vector<std::string> instances{"_Total"};
  std::ifstream stat("/proc/stat");
  for (std::string word; stat >> word;) {
    if (word.starts_with("cpu") && word.size() > 3) instances.push_back(word.substr(3));
  }
  ASSERT_GE(instances.size(), 2U);
  for (const std::string& instance : instances) {
    Counters::Counter counter = 0;
    const std::string path = "\\\\" + hostName() + "\\Processor(" + instance + ")\\% Idle Time";
    ASSERT_EQ(counters_.PdhVbAddCounter(query, path, counter), 0) << path;
    idle.push_back(counter);
  }

  ASSERT_EQ(counters_.PdhCollectQueryData(query), 0);
  // Ticks are 10 ms long, and a processor that was switched off has none at all.
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  ASSERT_EQ(counters_.PdhCollectQueryData(query), 0);

  for (std::size_t i = 0; i < idle.size(); ++i) {
    std::int32_t status = -1;
    const double value = counters_.PdhVbGetDoubleCounterValue(idle[i], status);
    EXPECT_EQ(status, 0) << instances[i];
    EXPECT_GE(value, 0) << instances[i];
    EXPECT_LE(value, 100) << instances[i];
  }
}

}  // namespace
}  // namespace veltrin
