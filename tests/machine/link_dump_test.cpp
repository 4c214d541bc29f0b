// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/link_dump.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>

#include "kernel_messages.h"

namespace veltrin {
namespace {

std::string about(int index, unsigned type = 1, unsigned flags = 0x41) {
  ifinfomsg info{};
  info.ifi_index = index;
  info.ifi_type = static_cast<unsigned short>(type);
  info.ifi_flags = flags;
  return bytesOf(info);
}

std::string device(int index, const char* name) {
  return message(RTM_NEWLINK, about(index) + nameAttribute(name));
}

const std::string kDone = message(NLMSG_DONE, std::string(4, '\0'));

TEST(LinkDump, TellsWhatADeviceIs) {
  rtnl_link_stats64 traffic{};
  traffic.rx_bytes = 0x123456789A;
  traffic.tx_bytes = 77;
  traffic.rx_nohandler = 5;
  LinkDump dump;

  EXPECT_EQ(dump.take(message(RTM_NEWLINK, about(7, 772, 0x1043) + nameAttribute("lo") +
                                               attribute(IFLA_MTU, bytesOf(std::uint32_t{65536})) +
                                               attribute(IFLA_ADDRESS, "abcdef") +
                                               attribute(IFLA_OPERSTATE, "\x06") +
                                               attribute(IFLA_STATS64, bytesOf(traffic))) +
                      kDone),
            LinkDump::State::Done);

  ASSERT_EQ(dump.links().size(), 1U);
  const Link& link = dump.links()[0];
  EXPECT_EQ(link.index, 7U);
  EXPECT_EQ(link.type, 772U);
  EXPECT_EQ(link.flags, 0x1043U);
  EXPECT_EQ(link.name, "lo");
  EXPECT_EQ(link.mtu, 65536U);
  EXPECT_EQ(link.address, "abcdef");
  EXPECT_EQ(link.operState, 6);
  EXPECT_EQ(link.traffic.rx_bytes, 0x123456789AU);
  EXPECT_EQ(link.traffic.tx_bytes, 77U);
  EXPECT_EQ(link.traffic.rx_nohandler, 5U);
}

TEST(LinkDump, GoesOnOverSeveralDatagrams) {
  LinkDump dump;

  EXPECT_EQ(dump.take(device(1, "lo") + device(2, "eth0")), LinkDump::State::More);
  EXPECT_EQ(dump.take(device(9, "br0")), LinkDump::State::More);
  EXPECT_EQ(dump.take(kDone), LinkDump::State::Done);

  ASSERT_EQ(dump.links().size(), 3U);
  EXPECT_EQ(dump.links()[1].name, "eth0");
  EXPECT_EQ(dump.links()[2].name, "br0");
}

// Kernels before 4.6 keep fewer counters.
TEST(LinkDump, TakesTheShorterCountersOfAnOldKernel) {
  rtnl_link_stats64 traffic{};
  traffic.rx_packets = 3;
  LinkDump dump;

  dump.take(message(RTM_NEWLINK, about(1) + nameAttribute("lo") +
                                     attribute(IFLA_STATS64, bytesOf(traffic).substr(0, 8))));

  ASSERT_EQ(dump.links().size(), 1U);
  EXPECT_EQ(dump.links()[0].traffic.rx_packets, 3U);
  EXPECT_EQ(dump.links()[0].traffic.tx_bytes, 0U);
}

TEST(LinkDump, FailsWhenTheKernelRefuses) {
  LinkDump dump;
  EXPECT_EQ(dump.take(message(NLMSG_ERROR, std::string(20, '\1'))), LinkDump::State::Failed);
}

TEST(LinkDump, FailsAtAMessageThatIsCut) {
  const std::string whole = device(1, "lo");
  LinkDump dump;
  EXPECT_EQ(dump.take(whole.substr(0, whole.size() - 5)), LinkDump::State::Failed);
}

TEST(LinkDump, FailsAtAMessageOfNoLength) {
  LinkDump dump;
  EXPECT_EQ(dump.take(std::string(64, '\0')), LinkDump::State::Failed);
}

TEST(LinkDump, PassesOverOtherMessages) {
  LinkDump dump;
  EXPECT_EQ(dump.take(message(RTM_DELLINK, about(1) + nameAttribute("lo"))), LinkDump::State::More);
  EXPECT_TRUE(dump.links().empty());
}

TEST(LinkDump, PassesOverADeviceWithoutANameOrAnIndex) {
  LinkDump dump;
  dump.take(message(RTM_NEWLINK, about(1)) + device(0, "none") + message(RTM_NEWLINK, "short"));
  EXPECT_TRUE(dump.links().empty());
}

// A header says four bytes where it takes sixteen itself.
TEST(LinkDump, FailsAtAMessageShorterThanItsHeader) {
  nlmsghdr header{};
  header.nlmsg_len = 4;
  header.nlmsg_type = RTM_NEWLINK;
  EXPECT_EQ(LinkDump().take(bytesOf(header)), LinkDump::State::Failed);
}

TEST(LinkDump, TakesNothingBehindTheLastMessage) {
  LinkDump dump;
  EXPECT_EQ(dump.take(device(1, "lo") + kDone + device(2, "eth0")), LinkDump::State::Done);
  EXPECT_EQ(dump.links().size(), 1U);
}

TEST(LinkDump, PassesOverAnAttributeShorterThanItsHeader) {
  LinkDump dump;
  dump.take(message(RTM_NEWLINK, about(1) + std::string("\x02\x00\x03\x00", 4) + "name"));
  EXPECT_TRUE(dump.links().empty());
}

TEST(LinkDump, TellsTheAddressesOfADevice) {
  ifaddrmsg info{};
  info.ifa_family = AF_INET;
  info.ifa_flags = IFA_F_PERMANENT;
  info.ifa_index = 7;
  LinkDump dump;

  dump.take(message(RTM_NEWADDR,
                    bytesOf(info) + attribute(IFA_ADDRESS, std::string("\xC0\x00\x02\x07", 4))));

  ASSERT_EQ(dump.addresses().size(), 1U);
  EXPECT_EQ(dump.addresses()[0].index, 7U);
  EXPECT_EQ(dump.addresses()[0].address.text(), "192.0.2.7");
  EXPECT_EQ(dump.addresses()[0].flags, unsigned{IFA_F_PERMANENT});
  EXPECT_TRUE(dump.links().empty());
}

TEST(LinkDump, PassesOverAnAddressWhoseMessageIsTooShort) {
  LinkDump dump;
  EXPECT_EQ(dump.take(message(RTM_NEWADDR, "short")), LinkDump::State::More);
  EXPECT_TRUE(dump.addresses().empty());
}

TEST(LinkDump, KeepsWhatStandsBeforeAnAttributeThatIsCut) {
  LinkDump dump;
  dump.take(
      message(RTM_NEWLINK, about(1) + nameAttribute("lo") + std::string("\xFF\xFF\x04\x00", 4)));
  ASSERT_EQ(dump.links().size(), 1U);
  EXPECT_EQ(dump.links()[0].name, "lo");
}

}  // namespace
}  // namespace veltrin
