// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/cards.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_machine.h"
#include "hardware_database_file.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Cards : public ::testing::Test {
 protected:
  // Gives an interface a device of its own in a folder of this name.
  std::string makeDevice(const std::string& interface, const std::string& folder) {
    std::string path = "/sys/devices/" + folder;
    tree_.makeFolder(path);
    tree_.link("/sys/class/net/" + interface + "/device", "../../../devices/" + folder);
    return path;
  }

  void putDatabase() {
    tree_.put("/usr/lib/udev/hwdb.bin",
              databaseFile({{"pci:v00008086*", " ID_VENDOR_FROM_DATABASE", "Example Corporation"},
                            {"pci:v00008086d000015F3*", " ID_MODEL_FROM_DATABASE", "Card Seven"},
                            {"usb:v0BDAp8153*", " ID_MODEL_FROM_DATABASE", "Plug Three"}}));
  }

  std::vector<CardFacts> cards() {
    return cardFacts(tree_.files(), machine_).value_or(std::vector<CardFacts>());
  }

  // The name of the card of an interface "eth0".
  std::string name() {
    machine_.network = {makeInterface(2, "eth0")};
    const std::vector<CardFacts> found = cards();
    return found.size() == 1 ? found[0].name : "";
  }

  TemporaryTree tree_;
  FakeMachine machine_;
};

TEST_F(Cards, AreUnknownWhereTheSystemTellsNone) {
  EXPECT_EQ(cardFacts(tree_.files(), machine_), std::nullopt);
}

TEST_F(Cards, AreNoneOnAMachineWithoutInterfaces) {
  machine_.network.emplace();
  EXPECT_THAT(cards(), IsEmpty());
}

TEST_F(Cards, ThatAreDevicesComeFirst) {
  machine_.network = {makeInterface(2, "br0"), makeInterface(3, "eth0"), makeInterface(4, "veth1"),
                      makeInterface(5, "wlan0")};
  makeDevice("eth0", "a");
  makeDevice("wlan0", "b");
  std::vector<std::string> names;
  for (const CardFacts& card : cards()) {
    names.push_back(card.connection);
  }
  EXPECT_THAT(names, ElementsAre("eth0", "wlan0", "br0", "veth1"));
}

TEST_F(Cards, ListIpv4AddressesFirst) {
  machine_.network = {withAddress(
      withAddress(withAddress(makeInterface(2, "eth0"), "fe80::1"), "192.0.2.7"), "192.0.2.8")};
  EXPECT_THAT(cards().at(0).addresses, ElementsAre("192.0.2.7", "192.0.2.8", "fe80::1"));
}

TEST_F(Cards, WithoutAMediumHaveNeitherAddressesNorDhcp) {
  NetworkInterface interface = withAddress(makeInterface(2, "eth0"), "192.0.2.7", false);
  interface.running = false;
  machine_.network = {interface};
  const CardFacts card = cards().at(0);
  EXPECT_FALSE(card.connected);
  EXPECT_EQ(card.dhcp, std::nullopt);
  EXPECT_THAT(card.addresses, IsEmpty());
}

// --- Names ---

TEST_F(Cards, AreNamedByTheDatabase) {
  putDatabase();
  tree_.put(makeDevice("eth0", "pci0/card") + "/modalias",
            "pci:v00008086d000015F3sv00001028sd00000A5Dbc02sc00i00\n");
  EXPECT_EQ(name(), "Example Corporation Card Seven");
}

TEST_F(Cards, ThatAreVirtualAreNamedByTheirBus) {
  putDatabase();
  tree_.put(makeDevice("eth0", "pci0/card/virtio2") + "/modalias", "virtio:d00000001v00001AF4\n");
  tree_.put("/sys/devices/pci0/card/modalias", "pci:v00008086d000015F3sv0sd0bc02sc00i00\n");
  EXPECT_EQ(name(), "Example Corporation Card Seven");
}

TEST_F(Cards, OfAVendorOnlyAreNamedByTheirDriver) {
  putDatabase();
  const std::string folder = makeDevice("eth0", "pci0/card");
  tree_.put(folder + "/modalias", "pci:v00008086d0000FFFFsv0sd0bc02sc00i00\n");
  tree_.link(folder + "/driver", "../../bus/pci/drivers/example_net");
  EXPECT_EQ(name(), "example_net");
}

TEST_F(Cards, OnAPlugAreNamedByTheDatabase) {
  putDatabase();
  tree_.put(makeDevice("eth0", "usb1/1-1/1-1:1.0") + "/modalias", "usb:v0BDAp8153d3100dc00\n");
  EXPECT_EQ(name(), "Plug Three");
}

TEST_F(Cards, OnAPlugThatTheDatabaseDoesNotKnowAreNamedByThemselves) {
  putDatabase();
  tree_.put(makeDevice("eth0", "usb1/1-1/1-1:1.0") + "/modalias", "usb:v1234p5678d3100dc00\n");
  tree_.put("/sys/devices/usb1/1-1/product", "USB Plug\n");
  EXPECT_EQ(name(), "USB Plug");
  tree_.put("/sys/devices/usb1/1-1/manufacturer", "Example\n");
  EXPECT_EQ(name(), "Example USB Plug");
}

TEST_F(Cards, WithoutADatabaseAreNamedByTheirDriver) {
  const std::string folder = makeDevice("eth0", "pci0/card");
  tree_.put(folder + "/modalias", "pci:v00008086d000015F3sv0sd0bc02sc00i00\n");
  tree_.link(folder + "/driver", "../../bus/pci/drivers/example_net");
  EXPECT_EQ(name(), "example_net");
}

TEST_F(Cards, OfABrokenDatabaseAreNamedByTheirDriver) {
  tree_.put("/usr/lib/udev/hwdb.bin", "KSLPHHRH\xFF garbage");
  const std::string folder = makeDevice("eth0", "pci0/card");
  tree_.put(folder + "/modalias", "\x01\xFF\n");
  tree_.link(folder + "/driver", "../../bus/pci/drivers/example_net");
  EXPECT_EQ(name(), "example_net");
}

TEST_F(Cards, ThatAreSoftwareAreNamedByTheirKind) {
  NetworkInterface interface = makeInterface(2, "br0");
  interface.kind = "bridge";
  machine_.network = {interface};
  EXPECT_EQ(cards().at(0).name, "bridge");
}

TEST_F(Cards, OfWhichNothingIsKnownAreNamedByTheirInterface) { EXPECT_EQ(name(), "eth0"); }

}  // namespace
}  // namespace veltrin
