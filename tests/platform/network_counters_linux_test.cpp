// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/linux/linux_counters.h"
#include "platform/linux/network_counters.h"
#include "tests/platform/network_tree.h"

namespace veltrin {
namespace {

using Names = std::vector<std::string>;
using std::chrono::microseconds;
using std::chrono::seconds;

constexpr const char* kHeadings =
    "Inter-|   Receive                                                |  Transmit\n"
    " face |bytes    packets errs drop fifo frame compressed multicast|bytes    packets errs "
    "drop fifo colls carrier compressed\n";

// The line of a device that has received and sent so many bytes.
std::string line(const std::string& device, std::uint64_t received, std::uint64_t sent) {
  return device + ": " + std::to_string(received) + " 11 12 13 14 15 16 17 " +
         std::to_string(sent) + " 21 22 23 24 25 26 27\n";
}

class NetworkCountersTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(counters_.PdhOpenQuery(query_), 0); }

  void fill(const std::string& lines) const { tree_.fillProc("net/dev", kHeadings + lines); }

  std::int32_t statusOfAdding(const std::string& instance) {
    Counters::Counter counter = 0;
    return counters_.PdhVbAddCounter(
        query_, "\\Network Interface(" + instance + ")\\Bytes Total/sec", counter);
  }

  Counters::Counter add(const std::string& instance, const std::string& name) {
    Counters::Counter counter = 0;
    const std::string path = "\\Network Interface(" + instance + ")\\" + name;
    EXPECT_EQ(counters_.PdhVbAddCounter(query_, path, counter), 0) << path;
    return counter;
  }

  std::int32_t collectAfter(CounterService::Moment::duration pause) {
    now_ += pause;
    return counters_.PdhCollectQueryData(query_);
  }

  double value(Counters::Counter counter) {
    return counters_.PdhVbGetDoubleCounterValue(counter, status_);
  }

  // The names as a caller gets them.
  Names instances() {
    constexpr std::uint32_t kEnough = 32768;
    std::string names(kEnough, '-');
    std::string list(kEnough, '-');
    std::uint32_t namesLength = kEnough;
    std::uint32_t length = kEnough;
    EXPECT_EQ(counters_.PdhEnumObjectItemsA("", "Network Interface", names, namesLength, list,
                                            length, kPerfDetailExpert, 0),
              0);
    Names all;
    for (std::size_t at = 0; at + 1 < length; at = list.find('\0', at) + 1) {
      if (list[at] != '\0') all.emplace_back(list.c_str() + at);
    }
    return all;
  }

  NetworkTree tree_;
  CounterService::Moment now_;
  LinuxCounters counters_{tree_.proc(),
                          std::make_shared<AdapterNames>(tree_.files(), tree_.database()),
                          [this] { return now_; }};
  Counters::Query query_ = 0;
  std::int32_t status_ = -1;
};

// --- Rates ---

TEST_F(NetworkCountersTest, TellTheBytesOfEachSecond) {
  fill(line("  eth0", 1000, 70));
  const auto total = add("Ethernet adapter eth0", "Bytes Total/sec");
  const auto received = add("Ethernet adapter eth0", "Bytes Received/sec");
  const auto sent = add("Ethernet adapter eth0", "Bytes Sent/sec");
  ASSERT_EQ(collectAfter(seconds(0)), 0);
  fill(line("  eth0", 5000, 570));

  ASSERT_EQ(collectAfter(seconds(2)), 0);

  EXPECT_EQ(value(received), 2000);
  EXPECT_EQ(value(sent), 250);
  EXPECT_EQ(value(total), 2250);
  EXPECT_EQ(status_, 0);
}

TEST_F(NetworkCountersTest, TakeANumberRightBehindTheColon) {
  fill("eth0:1000 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0\n");
  const auto received = add("Ethernet adapter eth0", "Bytes Received/sec");
  collectAfter(seconds(0));
  fill("eth0:1300 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0\n");
  collectAfter(seconds(1));

  EXPECT_EQ(value(received), 300);
}

TEST_F(NetworkCountersTest, CountBeyond32Bits) {
  fill(line("eth0", 4294967296000, 0));
  const auto received = add("Ethernet adapter eth0", "Bytes Received/sec");
  collectAfter(seconds(0));
  fill(line("eth0", 4294967296001, 0));
  collectAfter(seconds(1));

  EXPECT_EQ(value(received), 1);
}

// As the monitor does with three of them: a collection for each, its values read behind it.
TEST_F(NetworkCountersTest, ReadTheLastOfCollectionsInARowAsRightAsTheFirst) {
  fill(line("a", 0, 0) + line("b", 0, 0) + line("c", 0, 0));
  std::vector<Counters::Counter> received;
  for (const char* device : {"a", "b", "c"}) {
    received.push_back(add(std::string("Ethernet adapter ") + device, "Bytes Received/sec"));
  }
  for (int i = 0; i < 3; ++i) collectAfter(microseconds(20));
  now_ += seconds(1);
  fill(line("a", 1000000, 0) + line("b", 2000000, 0) + line("c", 3000000, 0));

  for (std::size_t i = 0; i < received.size(); ++i) {
    collectAfter(microseconds(20));
    EXPECT_NEAR(value(received[i]), 1000000.0 * static_cast<double>(i + 1), 1000);
    EXPECT_EQ(status_, 0);
  }
}

TEST_F(NetworkCountersTest, HaveNoRateOfADeviceWhoseBytesRanOver) {
  fill(line("eth0", 4294967290, 0));
  const auto received = add("Ethernet adapter eth0", "Bytes Received/sec");
  collectAfter(seconds(0));
  fill(line("eth0", 20, 0));

  collectAfter(seconds(1));

  EXPECT_EQ(value(received), 0);
  EXPECT_EQ(status_, kPdhNegativeValue);
}

// --- Devices that come and go ---

TEST_F(NetworkCountersTest, HaveNoValueOfADeviceThatHasGoneUntilItIsBack) {
  fill(line("usb0", 1000, 0));
  const auto received = add("Ethernet adapter usb0", "Bytes Received/sec");
  collectAfter(seconds(1));

  fill("");
  EXPECT_EQ(collectAfter(seconds(1)), kPdhNoData);
  EXPECT_EQ(value(received), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
  EXPECT_EQ(statusOfAdding("Ethernet adapter usb0"), kPdhNoInstance);

  fill(line("usb0", 100, 0));
  EXPECT_EQ(collectAfter(seconds(1)), 0);
  EXPECT_EQ(value(received), 0);
  EXPECT_EQ(status_, kPdhInvalidData);

  fill(line("usb0", 400, 0));
  collectAfter(seconds(1));
  EXPECT_EQ(value(received), 300);
  EXPECT_EQ(status_, 0);
}

TEST_F(NetworkCountersTest, HaveNoValueUnderTheOldNameOfADeviceThatIsRenamed) {
  fill(line("eth0", 1000, 0));
  const auto old = add("Ethernet adapter eth0", "Bytes Received/sec");
  collectAfter(seconds(1));
  fill(line("lan", 2000, 0));

  EXPECT_EQ(collectAfter(seconds(1)), kPdhNoData);

  value(old);
  EXPECT_EQ(status_, kPdhInvalidData);
  EXPECT_EQ(statusOfAdding("Ethernet adapter lan"), 0);
}

TEST_F(NetworkCountersTest, GoOnForACardWhoseDeviceIsRenamed) {
  tree_.plug("eth0", "pci0/03", "pci:i210");
  fill(line("eth0", 1000, 0));
  const auto received = add("Intel Corporation I210 [Copper]", "Bytes Received/sec");
  collectAfter(seconds(1));
  tree_.unplug("eth0");
  tree_.plug("lan", "pci0/03", "pci:i210");
  fill(line("lan", 1500, 0));

  collectAfter(seconds(1));

  EXPECT_EQ(value(received), 500);
}

TEST_F(NetworkCountersTest, KeepACardApartFromItsLikeThatGoes) {
  tree_.plug("eth0", "pci0/03", "pci:i210");
  tree_.plug("eth1", "pci0/07", "pci:i210");
  fill(line("eth0", 0, 0) + line("eth1", 0, 0));
  const auto first = add("Intel Corporation I210 [Copper]", "Bytes Received/sec");
  const auto second = add("Intel Corporation I210 [Copper] _2", "Bytes Received/sec");
  collectAfter(seconds(1));
  fill(line("eth1", 900, 0));

  collectAfter(seconds(1));

  EXPECT_EQ(value(second), 900);
  EXPECT_EQ(status_, 0);
  value(first);
  EXPECT_EQ(status_, kPdhInvalidData);
}

TEST_F(NetworkCountersTest, ReadTheOthersWhenADeviceComes) {
  fill(line("eth0", 1000, 0));
  const auto received = add("Ethernet adapter eth0", "Bytes Received/sec");
  collectAfter(seconds(1));
  fill(line("new", 5, 5) + line("eth0", 1100, 0));

  collectAfter(seconds(1));

  EXPECT_EQ(value(received), 100);
}

// --- Names ---

// By what the monitors leave out: names of fewer than five characters, and those that begin
// like a loopback's or a tunnel's.
bool counts(const std::string& instance) {
  std::string front = instance.substr(0, 5);
  std::transform(front.begin(), front.end(), front.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return instance.size() >= 5 && front != "local" && front != "isata";
}

TEST_F(NetworkCountersTest, HaveNamesByWhichLoopbackAndTunnelsAreLeftOut) {
  tree_.fillSys("lo", "type", "772\n");
  tree_.fillSys("sit0", "type", "776\n");
  tree_.fillSys("eth0", "type", "1\n");
  tree_.fillSys("wl", "type", "1\n");
  tree_.fillSys("wl", "uevent", "DEVTYPE=wlan\n");
  fill(line("lo", 1, 1) + line("sit0", 1, 1) + line("eth0", 1, 1) + line("wl", 1, 1));

  Names counted = instances();
  std::erase_if(counted, [](const std::string& name) { return !counts(name); });

  EXPECT_EQ(counted, (Names{"Ethernet adapter eth0", "Wireless adapter wl"}));
}

TEST_F(NetworkCountersTest, HaveNamesAsWindowsWritesInstances) {
  tree_.known["pci:odd"] = "Intel(R) 10/100 #7";
  tree_.plug("eth0", "pci0/03", "pci:odd");
  tree_.plug("eth1", "pci0/04", "pci:odd");
  fill(line("eth0", 1, 1) + line("eth1", 1, 1));

  EXPECT_EQ(instances(), (Names{"Intel[R] 10_100 _7", "Intel[R] 10_100 _7 _2"}));
  EXPECT_EQ(statusOfAdding("Intel[R] 10_100 _7 _2"), 0);
}

TEST_F(NetworkCountersTest, TellSevenDevices) {
  std::string lines;
  Names expected;
  for (char digit = '0'; digit < '7'; ++digit) {
    lines += line(std::string("eth") + digit, 1, 1);
    expected.push_back(std::string("Ethernet adapter eth") + digit);
  }
  fill(lines);

  EXPECT_EQ(instances(), expected);
}

TEST_F(NetworkCountersTest, TellNoDevices) {
  fill("");
  EXPECT_EQ(instances(), Names{});
}

TEST_F(NetworkCountersTest, TellNoDevicesWhereTheSystemTellsNothing) {
  EXPECT_EQ(instances(), Names{});
  EXPECT_EQ(statusOfAdding("Ethernet adapter eth0"), kPdhNoInstance);
}

TEST_F(NetworkCountersTest, PassOverLinesOfAnotherForm) {
  fill("eth0\n:\n: 1 2 3 4 5 6 7 8 9\neth1: 1 2 3\neth2: a b c d e f g h i\n\xFF: 1\n" +
       line("eth3", 1, 1));

  EXPECT_EQ(instances(), Names{"Ethernet adapter eth3"});
}

// --- Cost ---

TEST_F(NetworkCountersTest, LookUpANameOnceHoweverOftenTheyAreCollected) {
  tree_.plug("eth0", "pci0/03", "pci:i210");
  fill(line("eth0", 1, 1));
  for (int opening = 0; opening < 100; ++opening) {
    add("Intel Corporation I210 [Copper]", "Bytes Total/sec");
    collectAfter(seconds(1));
  }

  EXPECT_EQ(tree_.asked, 1);
}

}  // namespace
}  // namespace veltrin
