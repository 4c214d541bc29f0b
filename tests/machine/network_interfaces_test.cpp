// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/network_interfaces.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <sys/socket.h>

#include "kernel_messages.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string link(int index, unsigned flags, const std::string& attributes) {
  ifinfomsg facts{};
  facts.ifi_index = index;
  facts.ifi_flags = flags;
  return message(RTM_NEWLINK, bytesOf(facts) + attributes);
}

std::string named(int index, const std::string& name, unsigned flags = IFF_UP | IFF_RUNNING) {
  return link(index, flags, nameAttribute(name));
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

std::vector<std::string> namesIn(const LinkDump& dump) {
  std::vector<std::string> names;
  for (const NetworkInterface& interface : networkInterfaces(dump)) {
    names.push_back(interface.name);
  }
  return names;
}

// The addresses of the first interface; those that run out have a "*".
std::vector<std::string> addressesIn(const LinkDump& dump) {
  std::vector<std::string> texts;
  const NetworkInterface first = networkInterfaces(dump).at(0);
  for (const InterfaceAddress& own : first.addresses) {
    texts.push_back(own.address.text() + (own.lasting ? "" : "*"));
  }
  return texts;
}

TEST(NetworkInterfaces, ListsInterfacesByTheirIndexes) {
  LinkDump dump;
  dump.take(named(7, "seven") + named(2, "two"));
  dump.take(named(3, "three"));
  EXPECT_THAT(namesIn(dump), ElementsAre("two", "three", "seven"));
  EXPECT_EQ(networkInterfaces(dump)[0].index, 2U);
}

TEST(NetworkInterfaces, LeavesTheLoopbackOut) {
  LinkDump dump;
  dump.take(named(1, "lo", IFF_UP | IFF_RUNNING | IFF_LOOPBACK));
  EXPECT_THAT(networkInterfaces(dump), IsEmpty());
}

TEST(NetworkInterfaces, TakesAnInterfaceOnce) {
  LinkDump dump;
  dump.take(named(2, "two") + named(2, "again"));
  EXPECT_THAT(namesIn(dump), ElementsAre("two"));
}

TEST(NetworkInterfaces, CallsAnInterfaceRunningWhenItIsUpAndConnected) {
  for (const auto& [flags, running] :
       {std::pair(IFF_UP | IFF_RUNNING, true), std::pair(int{IFF_UP}, false),
        std::pair(int{IFF_RUNNING}, false), std::pair(0, false)}) {
    LinkDump dump;
    dump.take(named(2, "two", static_cast<unsigned>(flags)));
    EXPECT_EQ(networkInterfaces(dump).at(0).running, running) << flags;
  }
}

TEST(NetworkInterfaces, ReadsTheKindOfASoftwareInterface) {
  LinkDump dump;
  dump.take(link(4, 0,
                 attribute(IFLA_IFNAME, std::string("br0\0", 4)) +
                     attribute(IFLA_LINKINFO | NLA_F_NESTED,
                               attribute(IFLA_INFO_KIND, std::string("bridge\0", 7)))));
  EXPECT_EQ(networkInterfaces(dump).at(0).kind, "bridge");
}

TEST(NetworkInterfaces, GivesAddressesToTheirInterface) {
  LinkDump dump;
  dump.take(named(2, "two"));
  dump.take(
      address(2, AF_INET, IFA_F_PERMANENT, attribute(IFA_ADDRESS, kIpv4)) +
      address(9, AF_INET, IFA_F_PERMANENT, attribute(IFA_ADDRESS, kIpv4)) +
      address(2, AF_INET6, IFA_F_PERMANENT,
              attribute(IFA_ADDRESS, std::string("\xFE\x80", 2) + std::string(13, '\0') + '\1')));
  EXPECT_THAT(addressesIn(dump), ElementsAre("192.0.2.7", "fe80::1"));
}

TEST(NetworkInterfaces, TakesThisEndOfALinkBetweenTwo) {
  LinkDump dump;
  dump.take(named(2, "two"));
  dump.take(address(
      2, AF_INET, IFA_F_PERMANENT,
      attribute(IFA_ADDRESS, std::string("\xC0\x00\x02\x01", 4)) + attribute(IFA_LOCAL, kIpv4)));
  EXPECT_THAT(addressesIn(dump), ElementsAre("192.0.2.7"));
}

TEST(NetworkInterfaces, TellsAddressesThatRunOutByEitherForm) {
  LinkDump dump;
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

TEST(NetworkInterfaces, PassesOverAddressesOfAWrongSize) {
  LinkDump dump;
  dump.take(named(2, "two"));
  dump.take(address(2, AF_INET6, 0, attribute(IFA_ADDRESS, kIpv4)) +
            address(2, AF_INET, 0, attribute(IFA_ADDRESS, kIpv4 + "x")) +
            address(2, AF_PACKET, 0, attribute(IFA_ADDRESS, kIpv4)) + address(2, AF_INET, 0, ""));
  EXPECT_THAT(addressesIn(dump), IsEmpty());
}

TEST(NetworkInterfaces, PassesOverAnInterfaceWithBrokenAttributes) {
  LinkDump dump;
  const rtattr tooLong{200, IFLA_IFNAME};
  const rtattr tooShort{2, IFLA_IFNAME};
  dump.take(link(2, 0, bytesOf(tooLong)) + link(3, 0, bytesOf(tooShort) + "name"));
  EXPECT_THAT(networkInterfaces(dump), IsEmpty());
}

}  // namespace
}  // namespace veltrin
