// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstring>
#include <gtest/gtest.h>
#include <linux/if.h>
#include <linux/if_arp.h>
#include <string>
#include <vector>

#include "platform/linux/linux_interfaces.h"
#include "tests/platform/network_tree.h"

namespace veltrin {
namespace {

// A card that is up, with numbers that cannot be taken for each other.
Link card(std::uint32_t index, const std::string& name) {
  Link link;
  link.index = index;
  link.type = ARPHRD_ETHER;
  link.flags = IFF_UP | IFF_RUNNING;
  link.name = name;
  link.mtu = 1492;
  link.address = std::string("\x00\x1A\x2B\x03\x04\x05", 6);
  link.operState = IF_OPER_UP;
  link.traffic.rx_bytes = 101;
  link.traffic.rx_packets = 1000;
  link.traffic.multicast = 300;
  link.traffic.rx_dropped = 104;
  link.traffic.rx_errors = 105;
  link.traffic.rx_nohandler = 106;
  link.traffic.tx_bytes = 201;
  link.traffic.tx_packets = 202;
  link.traffic.tx_dropped = 203;
  link.traffic.tx_errors = 204;
  return link;
}

class LinuxInterfacesTest : public testing::Test {
 protected:
  std::vector<MIB_IFROW> rows(bool order = false) {
    std::uint32_t size = 0;
    EXPECT_EQ(interfaces_.GetIfTable(nullptr, size, order), kErrorInsufficientBuffer);
    std::vector<std::uint8_t> table(size);
    EXPECT_EQ(interfaces_.GetIfTable(table.data(), size, order), 0U);
    std::uint32_t count = 0;
    std::memcpy(&count, table.data(), sizeof count);
    EXPECT_EQ(count, links_.size());
    std::vector<MIB_IFROW> all(count);
    std::memcpy(all.data(), table.data() + sizeof count, count * sizeof(MIB_IFROW));
    return all;
  }

  MIB_IFROW row(const Link& link) {
    links_ = {link};
    return rows().at(0);
  }

  static std::string descriptionOf(const MIB_IFROW& row) {
    return {row.bDescr.begin(), row.bDescr.begin() + row.dwDescrLen};
  }

  NetworkTree tree_;
  std::vector<Link> links_{card(2, "eth0")};
  LinuxInterfaces interfaces_{std::make_shared<AdapterNames>(tree_.files(), tree_.database()),
                              tree_.sys(), [this] { return links_; }};
};

TEST_F(LinuxInterfacesTest, HaveTheFiguresOfTheKernel) {
  const MIB_IFROW row = rows().at(0);

  EXPECT_EQ(row.dwIndex, 2U);
  EXPECT_EQ(row.dwMtu, 1492U);
  EXPECT_EQ(row.dwInOctets, 101U);
  EXPECT_EQ(row.dwInUcastPkts, 700U);
  EXPECT_EQ(row.dwInNUcastPkts, 300U);
  EXPECT_EQ(row.dwInDiscards, 104U);
  EXPECT_EQ(row.dwInErrors, 105U);
  EXPECT_EQ(row.dwInUnknownProtos, 106U);
  EXPECT_EQ(row.dwOutOctets, 201U);
  EXPECT_EQ(row.dwOutUcastPkts, 202U);
  EXPECT_EQ(row.dwOutDiscards, 203U);
  EXPECT_EQ(row.dwOutErrors, 204U);
  EXPECT_EQ(row.dwOutNUcastPkts, 0U);
  EXPECT_EQ(row.dwOutQLen, 0U);
  EXPECT_EQ(row.dwLastChange, 0U);
}

TEST_F(LinuxInterfacesTest, CutCountersTo32Bits) {
  Link link = card(2, "eth0");
  link.traffic.rx_bytes = 0x500000007;
  link.traffic.tx_bytes = 0xFFFFFFFF;

  EXPECT_EQ(row(link).dwInOctets, 7U);
  EXPECT_EQ(row(link).dwOutOctets, 0xFFFFFFFFU);
}

TEST_F(LinuxInterfacesTest, HaveTheDeviceAsTheirNameInTwoBytesEach) {
  const MIB_IFROW row = rows().at(0);

  const std::string expected = "\\DEVICE\\TCPIP_eth0";
  for (std::size_t i = 0; i < row.wszName.size() / 2; ++i) {
    EXPECT_EQ(row.wszName[2 * i], i < expected.size() ? expected[i] : 0) << i;
    EXPECT_EQ(row.wszName[2 * i + 1], 0) << i;
  }
}

TEST_F(LinuxInterfacesTest, HaveTheAdapterAsTheirDescription) {
  tree_.plug("eth0", "pci0/03", "pci:i210");

  EXPECT_EQ(descriptionOf(rows().at(0)), "Intel Corporation I210 (Copper)");
}

TEST_F(LinuxInterfacesTest, CutADescriptionBeforeACharacterThatDoesNotFit) {
  tree_.known["pci:long"] = std::string(255, 'x') + "\u00E9 and more";
  tree_.plug("eth0", "pci0/03", "pci:long");

  EXPECT_EQ(descriptionOf(rows().at(0)), std::string(255, 'x'));
}

TEST_F(LinuxInterfacesTest, HaveTheAddressOfTheCard) {
  const MIB_IFROW row = rows().at(0);

  EXPECT_EQ(row.dwPhysAddrLen, 6U);
  EXPECT_EQ(row.bPhysAddr, (std::array<std::uint8_t, 8>{0x00, 0x1A, 0x2B, 0x03, 0x04, 0x05}));
}

TEST_F(LinuxInterfacesTest, KeepEightBytesOfALongAddress) {
  Link link = card(2, "ib0");
  link.address = "abcdefghijklmnopqrst";

  EXPECT_EQ(row(link).dwPhysAddrLen, 8U);
  EXPECT_EQ(row(link).bPhysAddr.back(), 'h');
}

TEST_F(LinuxInterfacesTest, HaveNoAddressOfTheLoopback) {
  Link link = card(1, "lo");
  link.type = ARPHRD_LOOPBACK;
  link.address = std::string(6, '\0');

  EXPECT_EQ(row(link).dwPhysAddrLen, 0U);
}

TEST_F(LinuxInterfacesTest, HaveTheSpeedOfTheLineInBits) {
  tree_.fillSys("eth0", "speed", "1000\n");
  EXPECT_EQ(rows().at(0).dwSpeed, 1000000000U);
}

TEST_F(LinuxInterfacesTest, HaveTheGreatestSpeedThatThereIsRoomFor) {
  tree_.fillSys("eth0", "speed", "10000\n");
  EXPECT_EQ(rows().at(0).dwSpeed, 4294967295U);
}

TEST_F(LinuxInterfacesTest, HaveNoSpeedThatIsNotKnown) {
  EXPECT_EQ(rows().at(0).dwSpeed, 0U);
  tree_.fillSys("eth0", "speed", "-1\n");
  EXPECT_EQ(rows().at(0).dwSpeed, 0U);
}

TEST_F(LinuxInterfacesTest, ComeByTheirIndexesWhenAsked) {
  links_ = {card(7, "c"), card(1, "a"), card(3, "b")};

  const auto sorted = rows(true);

  EXPECT_EQ(sorted[0].dwIndex, 1U);
  EXPECT_EQ(sorted[1].dwIndex, 3U);
  EXPECT_EQ(sorted[2].dwIndex, 7U);
}

TEST_F(LinuxInterfacesTest, ComeInTheKernelsOrderElse) {
  links_ = {card(7, "c"), card(1, "a")};

  const auto unsorted = rows(false);

  EXPECT_EQ(unsorted[0].dwIndex, 7U);
  EXPECT_EQ(unsorted[1].dwIndex, 1U);
}

TEST_F(LinuxInterfacesTest, WantMoreThanATableThatIsTooSmall) {
  std::uint32_t size = 4 + 859;
  std::vector<std::uint8_t> table(size, 0xEE);

  EXPECT_EQ(interfaces_.GetIfTable(table.data(), size, false), kErrorInsufficientBuffer);

  EXPECT_EQ(size, 4U + 860U);
  EXPECT_EQ(table, std::vector<std::uint8_t>(4 + 859, 0xEE));
}

TEST_F(LinuxInterfacesTest, LeaveASizeThatIsLargeEnoughAndWhatLiesBehindTheTable) {
  std::uint32_t size = 2000;
  std::vector<std::uint8_t> table(size, 0xEE);

  EXPECT_EQ(interfaces_.GetIfTable(table.data(), size, false), 0U);

  EXPECT_EQ(size, 2000U);
  EXPECT_EQ(table[4 + 860], 0xEE);
}

TEST_F(LinuxInterfacesTest, AreNotSupportedWhereTheKernelDoesNotTell) {
  links_.clear();
  std::uint32_t size = 0;

  EXPECT_EQ(interfaces_.GetIfTable(nullptr, size, false), kErrorNotSupported);
}

struct TypeOfDevice {
  unsigned arphrd;
  std::uint32_t type;
};

class InterfaceTypeTest : public LinuxInterfacesTest,
                          public testing::WithParamInterface<TypeOfDevice> {};

TEST_P(InterfaceTypeTest, IsTheOneOfIana) {
  Link link = card(2, "any0");
  link.type = GetParam().arphrd;

  EXPECT_EQ(row(link).dwType, GetParam().type);
}

// By numbers of linux/if_arp.h.
INSTANTIATE_TEST_SUITE_P(
    All, InterfaceTypeTest,
    testing::Values(TypeOfDevice{1, 6}, TypeOfDevice{772, 24}, TypeOfDevice{512, 23},
                    TypeOfDevice{768, 131}, TypeOfDevice{769, 131}, TypeOfDevice{776, 131},
                    TypeOfDevice{778, 131}, TypeOfDevice{823, 131}, TypeOfDevice{65534, 131},
                    TypeOfDevice{801, 71}, TypeOfDevice{803, 71}, TypeOfDevice{519, 243},
                    TypeOfDevice{24, 144}, TypeOfDevice{32, 199}, TypeOfDevice{280, 1}));

TEST_F(LinuxInterfacesTest, AreWirelessWhereThereIsARadio) {
  tree_.fillSys("eth0", "phy80211/name", "phy0\n");
  EXPECT_EQ(rows().at(0).dwType, 71U);
}

struct StateOfDevice {
  unsigned flags;
  std::uint8_t operState;
  std::uint32_t admin;
  std::uint32_t oper;
};

class InterfaceStatusTest : public LinuxInterfacesTest,
                            public testing::WithParamInterface<StateOfDevice> {};

TEST_P(InterfaceStatusTest, IsTheOneOfWindows) {
  Link link = card(2, "eth0");
  link.flags = GetParam().flags;
  link.operState = GetParam().operState;

  EXPECT_EQ(row(link).dwAdminStatus, GetParam().admin);
  EXPECT_EQ(row(link).dwOperStatus, GetParam().oper);
}

INSTANTIATE_TEST_SUITE_P(All, InterfaceStatusTest,
                         testing::Values(StateOfDevice{IFF_UP | IFF_RUNNING, IF_OPER_UP, 1, 5},
                                         StateOfDevice{IFF_UP | IFF_RUNNING, IF_OPER_UNKNOWN, 1, 5},
                                         StateOfDevice{IFF_UP, IF_OPER_UNKNOWN, 1, 2},
                                         StateOfDevice{IFF_UP, IF_OPER_DOWN, 1, 2},
                                         StateOfDevice{IFF_UP, IF_OPER_LOWERLAYERDOWN, 1, 2},
                                         StateOfDevice{IFF_UP, IF_OPER_DORMANT, 1, 3},
                                         StateOfDevice{IFF_UP, IF_OPER_TESTING, 1, 0},
                                         StateOfDevice{IFF_UP, IF_OPER_NOTPRESENT, 1, 0},
                                         StateOfDevice{0, IF_OPER_DOWN, 2, 0},
                                         StateOfDevice{0, IF_OPER_UP, 2, 0}));

}  // namespace
}  // namespace veltrin
