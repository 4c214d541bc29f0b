// SPDX-License-Identifier: GPL-3.0-or-later
// What this machine's kernel tells of its network devices, and of a network of a test's own
// with known traffic.
#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <cstring>
#include <gtest/gtest.h>
#include <linux/if_packet.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <linux/veth.h>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/linux_counters.h"
#include "platform/linux/linux_interfaces.h"
#include "platform/linux/network_counters.h"
#include "tests/platform/own_network.h"

namespace veltrin {
namespace {

using std::chrono::steady_clock;

void append(std::string& message, unsigned short type, const std::string& content) {
  rtattr attribute{};
  attribute.rta_len = static_cast<unsigned short>(sizeof attribute + content.size());
  attribute.rta_type = type;
  message.append(reinterpret_cast<const char*>(&attribute), sizeof attribute);
  message += content;
  message.resize(NLMSG_ALIGN(message.size()));
}

// Makes two devices that are the ends of one line (linux/veth.h), and lets both up.
bool addLine(const std::string& near, const std::string& far) {
  const std::string about(sizeof(ifinfomsg), '\0');
  std::string peer = about;
  append(peer, IFLA_IFNAME, far + '\0');
  std::string data;
  append(data, VETH_INFO_PEER, peer);
  std::string kind;
  append(kind, IFLA_INFO_KIND, "veth");
  append(kind, IFLA_INFO_DATA, data);
  std::string message = std::string(sizeof(nlmsghdr), '\0') + about;
  append(message, IFLA_IFNAME, near + '\0');
  append(message, IFLA_LINKINFO, kind);
  nlmsghdr header{};
  header.nlmsg_len = static_cast<unsigned>(message.size());
  header.nlmsg_type = RTM_NEWLINK;
  header.nlmsg_flags = NLM_F_REQUEST | NLM_F_CREATE | NLM_F_EXCL | NLM_F_ACK;
  std::memcpy(message.data(), &header, sizeof header);
  const int route = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE);
  struct {
    nlmsghdr header;
    nlmsgerr error;
    std::array<char, 4096> rest;
  } answer{};
  const auto size = static_cast<ssize_t>(message.size());
  const bool made = send(route, message.data(), message.size(), 0) == size &&
                    recv(route, &answer, sizeof answer, 0) > 0 &&
                    answer.header.nlmsg_type == NLMSG_ERROR && answer.error.error == 0;
  close(route);
  // An end sends as soon as it comes up when the other one is up already.
  return made && letsInterfaceUp(far.c_str()) && letsInterfaceUp(near.c_str());
}

// Sends whole frames through a device.
class FrameSender {
 public:
  explicit FrameSender(const char* device)
      : socket_(socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0)), device_(if_nametoindex(device)) {}
  ~FrameSender() { close(socket_); }

  bool send(std::size_t bytes) const {
    std::string frame(bytes, '\0');
    frame[12] = '\x88';  // an Ethernet type for experiments (IEEE 802)
    frame[13] = '\xB5';
    sockaddr_ll to{};
    to.sll_family = AF_PACKET;
    to.sll_ifindex = static_cast<int>(device_);
    return sendto(socket_, frame.data(), frame.size(), 0, reinterpret_cast<sockaddr*>(&to),
                  sizeof to) == static_cast<ssize_t>(bytes);
  }

 private:
  int socket_;
  unsigned device_;
};

Counters::Counter added(LinuxCounters& counters, Counters::Query query, const std::string& path) {
  Counters::Counter counter = 0;
  EXPECT_EQ(counters.PdhVbAddCounter(query, path, counter), 0) << path;
  return counter;
}

double valueOf(LinuxCounters& counters, Counters::Counter counter) {
  std::int32_t status = -1;
  const double value = counters.PdhVbGetDoubleCounterValue(counter, status);
  EXPECT_EQ(status, 0);
  return value;
}

// For a second, a frame in each few milliseconds; a collection for each of two devices, as
// the monitor does.
void measureALine() {
  if (!addLine("near7", "far7")) {
    GTEST_SKIP() << "this kernel gives a test no pair of devices";
  }
  constexpr std::size_t kFrame = 1000;
  LinuxCounters counters;
  Counters::Query query = 0;
  ASSERT_EQ(counters.PdhOpenQuery(query), 0);
  const std::string near = "\\Network Interface(Ethernet adapter near7)\\";
  const std::string far = "\\Network Interface(Ethernet adapter far7)\\";
  const auto sent = added(counters, query, near + "Bytes Sent/sec");
  const auto total = added(counters, query, near + "Bytes Total/sec");
  const auto received = added(counters, query, far + "Bytes Received/sec");
  const FrameSender sender("near7");
  counters.PdhCollectQueryData(query);
  counters.PdhCollectQueryData(query);
  const auto begin = steady_clock::now();
  std::size_t bytes = 0;
  while (steady_clock::now() - begin < std::chrono::seconds(1)) {
    ASSERT_TRUE(sender.send(kFrame));
    bytes += kFrame;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  counters.PdhCollectQueryData(query);
  counters.PdhCollectQueryData(query);
  const std::chrono::duration<double> took = steady_clock::now() - begin;

  const double expected = static_cast<double>(bytes) / took.count();
  std::printf("%.0f bytes a second were sent; %.0f and %.0f were measured\n", expected,
              valueOf(counters, sent), valueOf(counters, received));
  EXPECT_NEAR(valueOf(counters, sent), expected, expected * 0.05);
  EXPECT_NEAR(valueOf(counters, received), expected, expected * 0.05);
  EXPECT_NEAR(valueOf(counters, total), expected, expected * 0.05);
}

TEST(RealNetwork, CarriesAsManyBytesASecondAsWereSent) { inOwnNetwork(measureALine); }

void countDatagrams() {
  LinuxCounters counters;
  Counters::Query query = 0;
  ASSERT_EQ(counters.PdhOpenQuery(query), 0);
  const auto sent = added(counters, query, "\\IPv4\\Datagrams Sent/sec");
  const auto received = added(counters, query, "\\IPv4\\Datagrams Received/sec");
  const auto both = added(counters, query, "\\IPv4\\Datagrams/sec");
  counters.PdhCollectQueryData(query);
  const auto begin = steady_clock::now();
  const int any = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  sockaddr_in here{};
  here.sin_family = AF_INET;
  here.sin_port = htons(9);
  here.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  ASSERT_EQ(bind(any, reinterpret_cast<sockaddr*>(&here), sizeof here), 0);
  constexpr int kDatagrams = 500;
  for (int i = 0; i < kDatagrams; ++i) {
    ASSERT_EQ(sendto(any, "x", 1, 0, reinterpret_cast<sockaddr*>(&here), sizeof here), 1);
  }
  close(any);
  std::this_thread::sleep_for(std::chrono::milliseconds(250));
  counters.PdhCollectQueryData(query);
  const std::chrono::duration<double> took = steady_clock::now() - begin;

  const double expected = kDatagrams / took.count();
  EXPECT_NEAR(valueOf(counters, sent), expected, expected * 0.05);
  EXPECT_NEAR(valueOf(counters, received), expected, expected * 0.05);
  EXPECT_NEAR(valueOf(counters, both), 2 * expected, 2 * expected * 0.05);
}

TEST(RealNetwork, CarriesAsManyDatagramsASecondAsWereSent) { inOwnNetwork(countDatagrams); }

std::string descriptionOf(const MIB_IFROW& row) {
  return {row.bDescr.begin(), row.bDescr.begin() + row.dwDescrLen};
}

// The rows of the real table.
std::vector<MIB_IFROW> rowsNow() {
  LinuxInterfaces interfaces(std::make_shared<AdapterNames>());
  std::uint32_t size = 0;
  EXPECT_EQ(interfaces.GetIfTable(nullptr, size, true), kErrorInsufficientBuffer);
  std::vector<std::uint8_t> table(size);
  EXPECT_EQ(interfaces.GetIfTable(table.data(), size, true), 0U);
  std::uint32_t count = 0;
  std::memcpy(&count, table.data(), sizeof count);
  EXPECT_EQ(size, sizeof count + count * sizeof(MIB_IFROW));
  std::vector<MIB_IFROW> rows(count);
  std::memcpy(rows.data(), table.data() + sizeof count, count * sizeof(MIB_IFROW));
  return rows;
}

void lookAtTheTable() {
  if (!addLine("near7", "far7")) {
    GTEST_SKIP() << "this kernel gives a test no pair of devices";
  }
  ASSERT_TRUE(FrameSender("near7").send(1234));

  const std::vector<MIB_IFROW> rows = rowsNow();

  ASSERT_FALSE(rows.empty());
  EXPECT_EQ(rows[0].dwIndex, 1U);
  EXPECT_EQ(rows[0].dwType, 24U);
  EXPECT_EQ(descriptionOf(rows[0]), "Local Loopback lo");
  EXPECT_EQ(rows[0].dwAdminStatus, 1U);
  EXPECT_EQ(rows[0].dwOperStatus, 5U);
  EXPECT_EQ(rows[0].dwPhysAddrLen, 0U);
  const auto near = std::find_if(rows.begin(), rows.end(), [](const MIB_IFROW& row) {
    return row.dwIndex == if_nametoindex("near7");
  });
  ASSERT_NE(near, rows.end());
  EXPECT_EQ(descriptionOf(*near), "Ethernet adapter near7");
  EXPECT_EQ(near->dwType, 6U);
  EXPECT_EQ(near->dwMtu, 1500U);
  EXPECT_EQ(near->dwPhysAddrLen, 6U);
  EXPECT_EQ(near->dwOperStatus, 5U);
  EXPECT_GE(near->dwOutOctets, 1234U);
  EXPECT_GE(near->dwOutUcastPkts, 1U);
}

TEST(RealNetwork, IsInTheTableOfInterfaces) { inOwnNetwork(lookAtTheTable); }

TEST(RealNetwork, OfThisMachineHasALoopbackThatBeginsWithLocal) {
  const NetworkCounters counters("/proc", std::make_shared<AdapterNames>());
  std::vector<std::string> names;
  for (const CounterInstance& instance : counters.read()) names.push_back(instance.name);
  EXPECT_EQ(std::count(names.begin(), names.end(), "Local Loopback lo"), 1);
}

TEST(RealNetwork, OfThisMachineIsTheSameForCountersAndTable) {
  const auto adapters = std::make_shared<AdapterNames>();
  std::vector<std::string> counted;
  for (const CounterInstance& each : NetworkCounters("/proc", adapters).read()) {
    counted.push_back(each.name);
  }
  std::vector<std::string> listed;
  for (const MIB_IFROW& row : rowsNow()) {
    listed.push_back(instanceNameOf(descriptionOf(row)));
  }
  std::sort(counted.begin(), counted.end());
  std::sort(listed.begin(), listed.end());
  EXPECT_EQ(counted, listed);
}

}  // namespace
}  // namespace veltrin
