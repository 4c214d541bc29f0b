#include "machine/interface_dump.h"

#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/if_addr.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <sys/socket.h>

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using State = InterfaceDump::State;

template <typename Structure>
std::string bytesOf(const Structure& structure) {
  return {reinterpret_cast<const char*>(&structure), sizeof structure};
}

std::string filledUp(std::string bytes) {
  bytes.resize((bytes.size() + 3) / 4 * 4);
  return bytes;
}

std::string attribute(unsigned short type, const std::string& content) {
  const rtattr header{static_cast<unsigned short>(sizeof(rtattr) + content.size()), type};
  return filledUp(bytesOf(header) + content);
}

std::string message(unsigned short type, const std::string& body) {
  nlmsghdr header{};
  header.nlmsg_len = static_cast<unsigned>(sizeof header + body.size());
  header.nlmsg_type = type;
  return filledUp(bytesOf(header) + body);
}

std::string link(int index, unsigned flags, const std::string& attributes) {
  ifinfomsg facts{};
  facts.ifi_index = index;
  facts.ifi_flags = flags;
  return message(RTM_NEWLINK, bytesOf(facts) + attributes);
}

std::string named(int index, const std::string& name, unsigned flags = IFF_UP | IFF_RUNNING) {
  return link(index, flags, attribute(IFLA_IFNAME, name + '\0'));
}

std::string address(unsigned index, unsigned char family, unsigned char flags,
                    const std::string& attributes) {
  ifaddrmsg facts{};
  facts.ifa_family = family;
  facts.ifa_flags = flags;
  facts.ifa_index = index;
  return message(RTM_NEWADDR, bytesOf(facts) + attributes);
}

const std::string kIpv4{"\xC0\x00\x02\x07", 4};

std::vector<std::string> namesIn(const InterfaceDump& dump) {
  std::vector<std::string> names;
  for (const NetworkInterface& interface : dump.interfaces()) {
    names.push_back(interface.name);
  }
  return names;
}

// The addresses of the first interface; those that run out have a "*".
std::vector<std::string> addressesIn(const InterfaceDump& dump) {
  std::vector<std::string> texts;
  for (const InterfaceAddress& own : dump.interfaces().at(0).addresses) {
    texts.push_back(own.address.text() + (own.lasting ? "" : "*"));
  }
  return texts;
}

TEST(InterfaceDump, ListsInterfacesByTheirIndexes) {
  InterfaceDump dump;
  EXPECT_EQ(dump.take(named(7, "seven") + named(2, "two")), State::More);
  EXPECT_EQ(dump.take(named(3, "three")), State::More);
  EXPECT_THAT(namesIn(dump), ElementsAre("two", "three", "seven"));
  EXPECT_EQ(dump.interfaces()[0].index, 2U);
}

TEST(InterfaceDump, LeavesTheLoopbackOut) {
  InterfaceDump dump;
  dump.take(named(1, "lo", IFF_UP | IFF_RUNNING | IFF_LOOPBACK));
  EXPECT_THAT(dump.interfaces(), IsEmpty());
}

TEST(InterfaceDump, TakesAnInterfaceOnce) {
  InterfaceDump dump;
  dump.take(named(2, "two") + named(2, "again"));
  EXPECT_THAT(namesIn(dump), ElementsAre("two"));
}

TEST(InterfaceDump, CallsAnInterfaceRunningWhenItIsUpAndConnected) {
  for (const auto& [flags, running] :
       {std::pair(IFF_UP | IFF_RUNNING, true), std::pair(int{IFF_UP}, false),
        std::pair(int{IFF_RUNNING}, false), std::pair(0, false)}) {
    InterfaceDump dump;
    dump.take(named(2, "two", static_cast<unsigned>(flags)));
    EXPECT_EQ(dump.interfaces().at(0).running, running) << flags;
  }
}

TEST(InterfaceDump, ReadsTheKindOfASoftwareInterface) {
  InterfaceDump dump;
  dump.take(link(4, 0,
                 attribute(IFLA_IFNAME, std::string("br0\0", 4)) +
                     attribute(IFLA_LINKINFO | NLA_F_NESTED,
                               attribute(IFLA_INFO_KIND, std::string("bridge\0", 7)))));
  EXPECT_EQ(dump.interfaces().at(0).kind, "bridge");
}

TEST(InterfaceDump, GivesAddressesToTheirInterface) {
  InterfaceDump dump;
  dump.take(named(2, "two"));
  dump.take(
      address(2, AF_INET, IFA_F_PERMANENT, attribute(IFA_ADDRESS, kIpv4)) +
      address(9, AF_INET, IFA_F_PERMANENT, attribute(IFA_ADDRESS, kIpv4)) +
      address(2, AF_INET6, IFA_F_PERMANENT,
              attribute(IFA_ADDRESS, std::string("\xFE\x80", 2) + std::string(13, '\0') + '\1')));
  EXPECT_THAT(addressesIn(dump), ElementsAre("192.0.2.7", "fe80::1"));
}

TEST(InterfaceDump, TakesThisEndOfALinkBetweenTwo) {
  InterfaceDump dump;
  dump.take(named(2, "two"));
  dump.take(address(
      2, AF_INET, IFA_F_PERMANENT,
      attribute(IFA_ADDRESS, std::string("\xC0\x00\x02\x01", 4)) + attribute(IFA_LOCAL, kIpv4)));
  EXPECT_THAT(addressesIn(dump), ElementsAre("192.0.2.7"));
}

TEST(InterfaceDump, TellsAddressesThatRunOutByEitherForm) {
  InterfaceDump dump;
  dump.take(named(2, "two"));
  dump.take(address(2, AF_INET, 0, attribute(IFA_ADDRESS, kIpv4)));
  dump.take(address(2, AF_INET, IFA_F_PERMANENT,
                    attribute(IFA_ADDRESS, kIpv4) +
                        attribute(IFA_FLAGS, bytesOf(std::uint32_t{IFA_F_NOPREFIXROUTE}))));
  dump.take(address(2, AF_INET, 0,
                    attribute(IFA_ADDRESS, kIpv4) +
                        attribute(IFA_FLAGS, bytesOf(std::uint32_t{IFA_F_PERMANENT}))));
  EXPECT_THAT(addressesIn(dump), ElementsAre("192.0.2.7*", "192.0.2.7*", "192.0.2.7"));
}

TEST(InterfaceDump, PassesOverAddressesOfAWrongSize) {
  InterfaceDump dump;
  dump.take(named(2, "two"));
  dump.take(address(2, AF_INET6, 0, attribute(IFA_ADDRESS, kIpv4)) +
            address(2, AF_INET, 0, attribute(IFA_ADDRESS, kIpv4 + "x")) +
            address(2, AF_PACKET, 0, attribute(IFA_ADDRESS, kIpv4)) + address(2, AF_INET, 0, ""));
  EXPECT_THAT(addressesIn(dump), IsEmpty());
}

TEST(InterfaceDump, IsDoneWithTheLastMessage) {
  InterfaceDump dump;
  EXPECT_EQ(dump.take(named(2, "two") + message(NLMSG_DONE, bytesOf(0)) + named(3, "three")),
            State::Done);
  EXPECT_THAT(namesIn(dump), ElementsAre("two"));
}

TEST(InterfaceDump, FailsWithAnErrorOfTheKernel) {
  EXPECT_EQ(InterfaceDump().take(message(NLMSG_ERROR, bytesOf(nlmsgerr{}))), State::Failed);
}

TEST(InterfaceDump, FailsWithAMessageLongerThanItsDatagram) {
  const std::string whole = named(2, "two");
  EXPECT_EQ(InterfaceDump().take(whole.substr(0, whole.size() - 4)), State::Failed);
}

TEST(InterfaceDump, FailsWithAMessageShorterThanItsHeader) {
  nlmsghdr header{};
  header.nlmsg_len = 4;
  header.nlmsg_type = RTM_NEWLINK;
  EXPECT_EQ(InterfaceDump().take(bytesOf(header)), State::Failed);
}

TEST(InterfaceDump, PassesOverAnInterfaceWithBrokenAttributes) {
  InterfaceDump dump;
  const rtattr tooLong{200, IFLA_IFNAME};
  const rtattr tooShort{2, IFLA_IFNAME};
  EXPECT_EQ(dump.take(link(2, 0, bytesOf(tooLong)) + link(3, 0, bytesOf(tooShort) + "name")),
            State::More);
  EXPECT_THAT(dump.interfaces(), IsEmpty());
}

}  // namespace
}  // namespace veltrin
