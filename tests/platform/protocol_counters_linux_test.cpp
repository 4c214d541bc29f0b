// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/linux/linux_counters.h"
#include "platform/linux/protocol_counters.h"
#include "tests/platform/network_tree.h"

namespace veltrin {
namespace {

using std::chrono::seconds;

// As a kernel prints it. Each figure of the line "Ip:" is one more than the one before, so
// that no two can be taken for each other; the other lines are there to be passed over.
constexpr const char* kSnmp =
    "Ip: Forwarding DefaultTTL InReceives InHdrErrors InAddrErrors ForwDatagrams "
    "InUnknownProtos InDiscards InDelivers OutRequests OutDiscards OutNoRoutes ReasmTimeout "
    "ReasmReqds ReasmOKs ReasmFails FragOKs FragFails FragCreates OutTransmits\n"
    "Ip: 1 64 1003 1004 1005 1006 1007 1008 1009 1010 1011 1012 1013 1014 1015 1016 1017 1018 "
    "1019 1020\n"
    "Icmp: InMsgs InErrors\n"
    "Icmp: 5 6\n"
    "Tcp: RtoAlgorithm MaxConn InSegs\n"
    "Tcp: 1 -1 7\n";

constexpr const char* kLaterSnmp =
    "Ip: Forwarding DefaultTTL InReceives InHdrErrors InAddrErrors ForwDatagrams "
    "InUnknownProtos InDiscards InDelivers OutRequests OutDiscards OutNoRoutes ReasmTimeout "
    "ReasmReqds ReasmOKs ReasmFails FragOKs FragFails FragCreates OutTransmits\n"
    "Ip: 1 64 1103 2004 2005 1306 2007 2008 1509 1610 2011 2012 2013 1814 1915 2016 2117 2018 "
    "2219 9999\n";

constexpr const char* kSnmp6 =
    "Ip6InReceives                   \t5001\n"
    "Ip6InHdrErrors                  \t5002\n"
    "Ip6InTooBigErrors               \t5003\n"
    "Ip6InNoRoutes                   \t5004\n"
    "Ip6InAddrErrors                 \t5005\n"
    "Ip6InUnknownProtos              \t5006\n"
    "Ip6InTruncatedPkts              \t5007\n"
    "Ip6InDiscards                   \t5008\n"
    "Ip6InDelivers                   \t5009\n"
    "Ip6OutForwDatagrams             \t5010\n"
    "Ip6OutRequests                  \t5011\n"
    "Ip6OutDiscards                  \t5012\n"
    "Ip6OutNoRoutes                  \t5013\n"
    "Ip6ReasmTimeout                 \t5014\n"
    "Ip6ReasmReqds                   \t5015\n"
    "Ip6ReasmOKs                     \t5016\n"
    "Ip6ReasmFails                   \t5017\n"
    "Ip6FragOKs                      \t5018\n"
    "Ip6FragFails                    \t5019\n"
    "Ip6FragCreates                  \t5020\n"
    "Ip6InMcastPkts                  \t5021\n"
    "Icmp6InMsgs                     \t77\n"
    "Icmp6OutMsgs                    \t78\n";

constexpr const char* kLaterSnmp6 =
    "Ip6InReceives                   \t5101\n"
    "Ip6InHdrErrors                  \t6002\n"
    "Ip6InTooBigErrors               \t6003\n"
    "Ip6InNoRoutes                   \t6004\n"
    "Ip6InAddrErrors                 \t6005\n"
    "Ip6InUnknownProtos              \t6006\n"
    "Ip6InTruncatedPkts              \t6007\n"
    "Ip6InDiscards                   \t6008\n"
    "Ip6InDelivers                   \t5309\n"
    "Ip6OutForwDatagrams             \t5410\n"
    "Ip6OutRequests                  \t5611\n"
    "Ip6OutDiscards                  \t6012\n"
    "Ip6OutNoRoutes                  \t6013\n"
    "Ip6ReasmTimeout                 \t6014\n"
    "Ip6ReasmReqds                   \t5715\n"
    "Ip6ReasmOKs                     \t5816\n"
    "Ip6ReasmFails                   \t6017\n"
    "Ip6FragOKs                      \t5918\n"
    "Ip6FragFails                    \t6019\n"
    "Ip6FragCreates                  \t6030\n"
    "Ip6InMcastPkts                  \t9999\n"
    "Icmp6InMsgs                     \t99\n";

class ProtocolCountersTest : public testing::Test {
 protected:
  void SetUp() override {
    tree_.fillProc("net/snmp", kSnmp);
    tree_.fillProc("net/snmp6", kSnmp6);
    ASSERT_EQ(counters_.PdhOpenQuery(query_), 0);
  }

  Counters::Counter add(const std::string& path) {
    Counters::Counter counter = 0;
    EXPECT_EQ(counters_.PdhVbAddCounter(query_, path, counter), 0) << path;
    return counter;
  }

  std::int32_t collectAfter(seconds pause) {
    now_ += pause;
    return counters_.PdhCollectQueryData(query_);
  }

  double value(Counters::Counter counter) {
    return counters_.PdhVbGetDoubleCounterValue(counter, status_);
  }

  NetworkTree tree_;
  CounterService::Moment now_;
  LinuxCounters counters_{tree_.proc(),
                          std::make_shared<AdapterNames>(tree_.files(), tree_.database()),
                          [this] { return now_; }};
  Counters::Query query_ = 0;
  std::int32_t status_ = -1;
};

// What a counter shows: a number as it stands at the end, a rate from one to the other file
// over two seconds.
struct Figure {
  const char* path;
  double value;
};

class ProtocolFigureTest : public ProtocolCountersTest,
                           public testing::WithParamInterface<Figure> {};

TEST_P(ProtocolFigureTest, IsThatOfTheKernel) {
  const auto counter = add(GetParam().path);
  ASSERT_EQ(collectAfter(seconds(0)), 0);
  tree_.fillProc("net/snmp", kLaterSnmp);
  tree_.fillProc("net/snmp6", kLaterSnmp6);

  ASSERT_EQ(collectAfter(seconds(2)), 0);

  EXPECT_DOUBLE_EQ(value(counter), GetParam().value);
  EXPECT_EQ(status_, 0);
}

INSTANTIATE_TEST_SUITE_P(
    IPv4, ProtocolFigureTest,
    testing::Values(Figure{"\\IPv4\\Datagrams/sec", (100 + 600) / 2.0},
                    Figure{"\\IPv4\\Datagrams Received/sec", 100 / 2.0},
                    Figure{"\\IPv4\\Datagrams Received Header Errors", 2004},
                    Figure{"\\IPv4\\Datagrams Received Address Errors", 2005},
                    Figure{"\\IPv4\\Datagrams Forwarded/sec", 300 / 2.0},
                    Figure{"\\IPv4\\Datagrams Received Unknown Protocol", 2007},
                    Figure{"\\IPv4\\Datagrams Received Discarded", 2008},
                    Figure{"\\IPv4\\Datagrams Received Delivered/sec", 500 / 2.0},
                    Figure{"\\IPv4\\Datagrams Sent/sec", 600 / 2.0},
                    Figure{"\\IPv4\\Datagrams Outbound Discarded", 2011},
                    Figure{"\\IPv4\\Datagrams Outbound No Route", 2012},
                    Figure{"\\IPv4\\Fragments Received/sec", 800 / 2.0},
                    Figure{"\\IPv4\\Fragments Re-assembled/sec", 900 / 2.0},
                    Figure{"\\IPv4\\Fragment Re-assembly Failures", 2016},
                    Figure{"\\IPv4\\Fragmented Datagrams/sec", 1100 / 2.0},
                    Figure{"\\IPv4\\Fragmentation Failures", 2018},
                    Figure{"\\IPv4\\Fragments Created/sec", 1200 / 2.0}));

INSTANTIATE_TEST_SUITE_P(
    IPv6, ProtocolFigureTest,
    testing::Values(Figure{"\\IPv6\\Datagrams/sec", (100 + 600) / 2.0},
                    Figure{"\\IPv6\\Datagrams Received/sec", 100 / 2.0},
                    Figure{"\\IPv6\\Datagrams Received Header Errors", 6002},
                    Figure{"\\IPv6\\Datagrams Received Address Errors", 6005},
                    Figure{"\\IPv6\\Datagrams Forwarded/sec", 400 / 2.0},
                    Figure{"\\IPv6\\Datagrams Received Unknown Protocol", 6006},
                    Figure{"\\IPv6\\Datagrams Received Discarded", 6008},
                    Figure{"\\IPv6\\Datagrams Received Delivered/sec", 300 / 2.0},
                    Figure{"\\IPv6\\Datagrams Sent/sec", 600 / 2.0},
                    Figure{"\\IPv6\\Datagrams Outbound Discarded", 6012},
                    Figure{"\\IPv6\\Datagrams Outbound No Route", 6013},
                    Figure{"\\IPv6\\Fragments Received/sec", 700 / 2.0},
                    Figure{"\\IPv6\\Fragments Re-assembled/sec", 800 / 2.0},
                    Figure{"\\IPv6\\Fragment Re-assembly Failures", 6017},
                    Figure{"\\IPv6\\Fragmented Datagrams/sec", 900 / 2.0},
                    Figure{"\\IPv6\\Fragmentation Failures", 6019},
                    Figure{"\\IPv6\\Fragments Created/sec", 1010 / 2.0}));

TEST_F(ProtocolCountersTest, HaveNoRateAfterTheFirstCollection) {
  const auto counter = add("\\IPv4\\Datagrams/sec");

  collectAfter(seconds(0));

  EXPECT_EQ(value(counter), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
}

// As the window does, once for each protocol.
TEST_F(ProtocolCountersTest, HaveTheSameRatesAfterASecondCollectionAtOnce) {
  const auto counter = add("\\IPv4\\Datagrams Received/sec");
  collectAfter(seconds(0));
  tree_.fillProc("net/snmp", kLaterSnmp);

  collectAfter(seconds(1));
  ASSERT_EQ(value(counter), 100);
  collectAfter(seconds(0));

  EXPECT_EQ(value(counter), 100);
}

TEST_F(ProtocolCountersTest, AreSeventeenOfEachInOneOrder) {
  const IPv4Counters four(tree_.proc());
  const IPv6Counters six(tree_.proc());
  std::vector<std::string> namesOfFour;
  std::vector<std::string> namesOfSix;
  for (const CounterName& each : four.counters()) namesOfFour.push_back(each.name);
  for (const CounterName& each : six.counters()) namesOfSix.push_back(each.name);

  EXPECT_EQ(namesOfFour.size(), 17U);
  EXPECT_EQ(namesOfFour, namesOfSix);
}

TEST_F(ProtocolCountersTest, AreNotThereWithoutIPv6) {
  tree_.removeProc("net/snmp6");
  Counters::Counter counter = 77;

  EXPECT_EQ(counters_.PdhVbAddCounter(query_, "\\IPv6\\Datagrams/sec", counter), kPdhNoObject);

  EXPECT_EQ(counter, 77);
}

TEST_F(ProtocolCountersTest, AreThereForIPv4WithoutIPv6) {
  tree_.removeProc("net/snmp6");
  const auto counter = add("\\IPv4\\Datagrams Received Discarded");

  EXPECT_EQ(collectAfter(seconds(0)), 0);

  EXPECT_EQ(value(counter), 1008);
}

TEST_F(ProtocolCountersTest, HaveNoValueOnceTheProtocolHasGone) {
  const auto counter = add("\\IPv6\\Datagrams Received Discarded");
  tree_.removeProc("net/snmp6");

  EXPECT_EQ(collectAfter(seconds(0)), kPdhNoData);

  EXPECT_EQ(value(counter), 0);
  EXPECT_EQ(status_, kPdhInvalidData);
}

TEST_F(ProtocolCountersTest, AreNotThereInAFileOfAnotherForm) {
  for (const char* content : {"", "Ip:\n", "Ip: InReceives\n", "Tcp: InSegs\nTcp: 5\n",
                              "Ip: InReceives\nTcp: 5\n", "\xFF\n"}) {
    tree_.fillProc("net/snmp", content);
    Counters::Counter counter = 0;
    EXPECT_EQ(counters_.PdhVbAddCounter(query_, "\\IPv4\\Datagrams/sec", counter), kPdhNoObject)
        << content;
  }
}

TEST_F(ProtocolCountersTest, AreZeroWhereAnOldKernelDoesNotCount) {
  tree_.fillProc("net/snmp", "Ip: Forwarding InReceives InDelivers\nIp: 1 40 30\n");
  const auto missing = add("\\IPv4\\Fragmentation Failures");
  const auto delivered = add("\\IPv4\\Datagrams Received Delivered/sec");
  collectAfter(seconds(0));
  tree_.fillProc("net/snmp", "Ip: Forwarding InReceives InDelivers\nIp: 1 60 44\n");
  collectAfter(seconds(2));

  EXPECT_EQ(value(missing), 0);
  EXPECT_EQ(status_, 0);
  EXPECT_EQ(value(delivered), 7);
}

TEST_F(ProtocolCountersTest, HaveNoRateOfAKernelCounterThatRanOver) {
  tree_.fillProc("net/snmp", "Ip: InReceives\nIp: 4294967290\n");
  const auto received = add("\\IPv4\\Datagrams Received/sec");
  collectAfter(seconds(0));
  tree_.fillProc("net/snmp", "Ip: InReceives\nIp: 10\n");

  collectAfter(seconds(1));
  EXPECT_EQ(value(received), 0);
  EXPECT_EQ(status_, kPdhNegativeValue);

  tree_.fillProc("net/snmp", "Ip: InReceives\nIp: 25\n");
  collectAfter(seconds(1));
  EXPECT_EQ(value(received), 15);
}

TEST(RealProtocolCounters, AreAllThereForIPv4) {
  const IPv4Counters counters("/proc");
  const std::vector<CounterInstance> instances = counters.read();
  ASSERT_EQ(instances.size(), 1U);
  EXPECT_EQ(instances[0].readings.size(), 17U);
}

}  // namespace
}  // namespace veltrin
