// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/linux/adapter_names.h"
#include "tests/platform/network_tree.h"

namespace veltrin {
namespace {

using Names = std::vector<std::string>;

class AdapterNamesTest : public testing::Test {
 protected:
  std::string nameOf(const std::string& device) { return names_.namesOf({device}).at(0); }

  NetworkTree tree_;
  AdapterNames names_{tree_.files(), tree_.database()};
};

TEST_F(AdapterNamesTest, AreThoseOfTheHardwareDatabase) {
  tree_.plug("eth0", "pci0/03", "pci:i210");

  EXPECT_EQ(nameOf("eth0"), "Intel Corporation I210 (Copper)");
}

TEST_F(AdapterNamesTest, AreThoseOfTheDeviceThatCarriesAVirtualOne) {
  tree_.plug("eth0", "pci0/03/virtio0", "virtio:d00000001v00001AF4");
  std::ofstream(tree_.sys() + "/devices/pci0/03/modalias") << "pci:i210\n";

  EXPECT_EQ(nameOf("eth0"), "Intel Corporation I210 (Copper)");
}

TEST_F(AdapterNamesTest, TellTheKindOfACardThatTheDatabaseDoesNotKnow) {
  tree_.plug("eth0", "pci0/03", "pci:unknown");
  tree_.fillSys("eth0", "type", "1\n");

  EXPECT_EQ(nameOf("eth0"), "Ethernet adapter eth0");
}

// One of fewer than five letters would count as none.
TEST_F(AdapterNamesTest, TellTheKindOfACardWhoseNameIsTooShort) {
  tree_.known["pci:short"] = "I210";
  tree_.known["pci:least"] = "I210T";
  tree_.plug("eth0", "pci0/03", "pci:short");
  tree_.plug("eth1", "pci0/04", "pci:least");

  EXPECT_EQ(names_.namesOf({"eth0", "eth1"}), (Names{"Ethernet adapter eth0", "I210T"}));
}

TEST_F(AdapterNamesTest, NumberCardsOfOneMakeByTheirPlaces) {
  tree_.plug("enp9", "pci0/09", "pci:i210");
  tree_.plug("enp3", "pci0/03", "pci:i210");
  tree_.plug("enp7", "pci0/07", "pci:i210");

  EXPECT_EQ(names_.namesOf({"enp9", "enp3", "enp7"}),
            (Names{"Intel Corporation I210 (Copper) #3", "Intel Corporation I210 (Copper)",
                   "Intel Corporation I210 (Copper) #2"}));
}

TEST_F(AdapterNamesTest, TellThePortsOfOneCardApart) {
  tree_.plug("a", "pci0/03", "pci:i210");
  tree_.plug("b", "pci0/03", "pci:i210");
  tree_.fillSys("a", "dev_port", "1\n");
  tree_.fillSys("b", "dev_port", "0\n");

  EXPECT_EQ(names_.namesOf({"a", "b"}),
            (Names{"Intel Corporation I210 (Copper) #2", "Intel Corporation I210 (Copper)"}));
}

TEST_F(AdapterNamesTest, TellTwoDevicesOfOnePortApart) {
  tree_.plug("wlan0", "pci0/05", "pci:wifi");
  tree_.plug("wlan0_ap", "pci0/05", "pci:wifi");

  EXPECT_EQ(names_.namesOf({"wlan0", "wlan0_ap"}),
            (Names{"Qualcomm QCA6174 802.11ac", "Qualcomm QCA6174 802.11ac #2"}));
}

TEST_F(AdapterNamesTest, StayWhenAnotherCardOfTheMakeGoes) {
  tree_.plug("enp3", "pci0/03", "pci:i210");
  tree_.plug("enp7", "pci0/07", "pci:i210");
  names_.namesOf({"enp3", "enp7"});

  EXPECT_EQ(nameOf("enp7"), "Intel Corporation I210 (Copper) #2");
}

TEST_F(AdapterNamesTest, StayWhenACardOfTheMakeComes) {
  tree_.plug("enp7", "pci0/07", "pci:i210");
  nameOf("enp7");

  tree_.plug("enp3", "pci0/03", "pci:i210");

  EXPECT_EQ(names_.namesOf({"enp3", "enp7"}),
            (Names{"Intel Corporation I210 (Copper) #2", "Intel Corporation I210 (Copper)"}));
}

TEST_F(AdapterNamesTest, AreTheSameForACardThatComesBack) {
  tree_.plug("enp3", "pci0/03", "pci:i210");
  tree_.plug("enp7", "pci0/07", "pci:i210");
  names_.namesOf({"enp3", "enp7"});
  nameOf("enp3");

  EXPECT_EQ(names_.namesOf({"enp7", "enp3"}),
            (Names{"Intel Corporation I210 (Copper) #2", "Intel Corporation I210 (Copper)"}));
}

TEST_F(AdapterNamesTest, AreTheSameForACardWhoseDeviceIsRenamed) {
  tree_.plug("eth0", "pci0/03", "pci:i210");
  tree_.plug("eth1", "pci0/07", "pci:i210");
  names_.namesOf({"eth0", "eth1"});
  tree_.unplug("eth1");
  tree_.plug("lan", "pci0/07", "pci:i210");

  EXPECT_EQ(names_.namesOf({"eth0", "lan"}),
            (Names{"Intel Corporation I210 (Copper)", "Intel Corporation I210 (Copper) #2"}));
}

TEST_F(AdapterNamesTest, LookAtADeviceOnce) {
  tree_.plug("eth0", "pci0/03", "pci:i210");
  tree_.plug("eth1", "pci0/07", "pci:i210");

  for (int i = 0; i < 10; ++i) names_.namesOf({"eth0", "eth1"});

  EXPECT_EQ(tree_.asked, 2);
}

TEST_F(AdapterNamesTest, AreNewForAnotherCardInTheOldPlace) {
  tree_.plug("eth0", "pci0/03", "pci:i210");
  nameOf("eth0");
  names_.namesOf({});
  tree_.unplug("eth0");
  tree_.plug("eth0", "pci0/03", "pci:wifi");

  EXPECT_EQ(nameOf("eth0"), "Qualcomm QCA6174 802.11ac");
}

TEST_F(AdapterNamesTest, OfNoDevicesAreNone) { EXPECT_EQ(names_.namesOf({}), Names{}); }

struct KindOfDevice {
  const char* label;
  const char* device;
  const char* type;
  const char* uevent;
  const char* extra;  // one more file, whose content is 0x1002
  const char* name;
};

class AdapterKindTest : public AdapterNamesTest,
                        public testing::WithParamInterface<KindOfDevice> {};

TEST_P(AdapterKindTest, IsTold) {
  const KindOfDevice& kind = GetParam();
  tree_.fillSys(kind.device, "type", std::string(kind.type) + "\n");
  tree_.fillSys(kind.device, "uevent", kind.uevent);
  if (*kind.extra != '\0') tree_.fillSys(kind.device, kind.extra, "0x1002\n");

  EXPECT_EQ(nameOf(kind.device), kind.name);
}

// The numbers are those of linux/if_arp.h.
INSTANTIATE_TEST_SUITE_P(
    All, AdapterKindTest,
    testing::Values(
        KindOfDevice{"loopback", "lo", "772", "", "", "Local Loopback lo"},
        KindOfDevice{"renamedLoopback", "self", "772", "", "", "Local Loopback self"},
        KindOfDevice{"ipip", "tunl0", "768", "", "", "isatap tunl0"},
        KindOfDevice{"ip6tnl", "ip6tnl0", "769", "", "", "isatap ip6tnl0"},
        KindOfDevice{"sit", "sit0", "776", "", "", "isatap sit0"},
        KindOfDevice{"gre", "gre0", "778", "", "", "isatap gre0"},
        KindOfDevice{"ip6gre", "ip6gre0", "823", "", "", "isatap ip6gre0"},
        KindOfDevice{"ethernet", "eth0", "1", "INTERFACE=eth0\n", "", "Ethernet adapter eth0"},
        KindOfDevice{"dummy", "dummy0", "1", "", "", "Ethernet adapter dummy0"},
        KindOfDevice{"wlan", "wlan0", "1", "DEVTYPE=wlan\n", "", "Wireless adapter wlan0"},
        KindOfDevice{"oldWlan", "wlan0", "1", "", "wireless/status", "Wireless adapter wlan0"},
        KindOfDevice{"bridge", "br0", "1", "DEVTYPE=bridge\n", "", "Bridge adapter br0"},
        KindOfDevice{"bond", "bond0", "1", "A=b\nDEVTYPE=bond\n", "", "Bond adapter bond0"},
        KindOfDevice{"vlan", "eth0.5", "1", "DEVTYPE=vlan\n", "", "VLAN adapter eth0.5"},
        KindOfDevice{"vxlan", "vx0", "1", "DEVTYPE=vxlan\n", "", "VXLAN adapter vx0"},
        KindOfDevice{"wireguard", "wg0", "65534", "DEVTYPE=wireguard\n", "",
                     "WireGuard adapter wg0"},
        KindOfDevice{"bluetooth", "bnep0", "1", "DEVTYPE=bluetooth\n", "",
                     "Bluetooth adapter bnep0"},
        KindOfDevice{"wwan", "wwan0", "519", "DEVTYPE=wwan\n", "",
                     "Mobile broadband adapter wwan0"},
        KindOfDevice{"tap", "tap0", "1", "", "tun_flags", "TAP adapter tap0"},
        KindOfDevice{"ppp", "ppp0", "512", "", "", "PPP adapter ppp0"}),
    [](const auto& info) { return info.param.label; });

TEST_F(AdapterNamesTest, TellATunnelOfAProgram) {
  tree_.fillSys("tun0", "type", "65534\n");
  tree_.fillSys("tun0", "tun_flags", "0x1001\n");

  EXPECT_EQ(nameOf("tun0"), "TUN adapter tun0");
}

TEST_F(AdapterNamesTest, AreThereForDevicesOfWhichTheSystemDoesNotTell) {
  EXPECT_EQ(names_.namesOf({"lo", "eth7"}), (Names{"Local Loopback lo", "Ethernet adapter eth7"}));
}

TEST(InstanceName, HasNothingOfWhatAPathIsMadeOf) {
  EXPECT_EQ(instanceNameOf("Intel(R) 82579LM #2"), "Intel[R] 82579LM _2");
  EXPECT_EQ(instanceNameOf("10/100 a\\b"), "10_100 a_b");
  EXPECT_EQ(instanceNameOf("Bridge adapter br0"), "Bridge adapter br0");
}

// This machine may have a database or none; it knows no such thing.
TEST(AdapterDatabase, DoesNotKnowADeviceThatThereIsNot) {
  EXPECT_EQ(fullNameInDatabase("no such bus:v0000d0000"), "");
}

TEST(RealAdapterNames, TellTheLoopbackOfThisMachine) {
  AdapterNames names;
  EXPECT_EQ(names.namesOf({"lo"}), Names{"Local Loopback lo"});
}

}  // namespace
}  // namespace veltrin
