// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/pci_devices.h"

#include <gtest/gtest.h>

#include "device_tree.h"

namespace veltrin {
namespace {

class PciDevices : public ::testing::Test {
 protected:
  std::vector<PciDevice> devices() const { return pciDevices(tree_.files()); }

  PciDevice only(const PciFolder& folder) const {
    putPci(tree_, folder);
    const auto found = devices();
    EXPECT_EQ(found.size(), 1U);
    return found.empty() ? PciDevice() : found[0];
  }

  TemporaryTree tree_;
};

TEST_F(PciDevices, AreNoneWithoutTheBus) { EXPECT_TRUE(devices().empty()); }

TEST_F(PciDevices, TellTheirNumbersAndTheirDriver) {
  const PciDevice device = only({});
  EXPECT_EQ(device.address, "0000:00:17.0");
  EXPECT_EQ(device.vendor, 0x8086);
  EXPECT_EQ(device.device, 0xA352);
  EXPECT_EQ(device.subVendor, 0x17AA);
  EXPECT_EQ(device.subDevice, 0x0001);
  EXPECT_EQ(device.code, 0x010601U);
  EXPECT_EQ(device.kind(), 0x01);
  EXPECT_EQ(device.subclass(), 0x06);
  EXPECT_EQ(device.revision, "10");
  EXPECT_EQ(device.driver, "ahci");
  EXPECT_EQ(device.powerState, "D0");
  EXPECT_EQ(device.modalias, "pci:v00008086d0000A352sv000017AAsd00000001bc01sc06i01");
}

TEST_F(PciDevices, HaveIdsWithTheSubsystemsOwnNumberBeforeItsVendor) {
  EXPECT_EQ(deviceIdOf(only({})), "PCI\\VEN_8086&DEV_A352&SUBSYS_000117AA&REV_10\\0000:00:17.0");
}

TEST_F(PciDevices, WithoutARevisionHaveNoneInTheirIds) {
  for (const char* revision : {"", "10", "0x", "0x100", "0xZZ"}) {
    const TemporaryTree tree;
    putPci(tree, {.revision = revision});
    EXPECT_EQ(deviceIdOf(pciDevices(tree.files()).at(0)),
              "PCI\\VEN_8086&DEV_A352&SUBSYS_000117AA\\0000:00:17.0")
        << revision;
  }
}

TEST_F(PciDevices, WithAHexadecimalRevisionTellItInCapitals) {
  EXPECT_EQ(only({.revision = "0xff"}).revision, "FF");
}

TEST_F(PciDevices, WithoutASubsystemHaveZeros) {
  const PciDevice device = only({.subIds = "nothing"});
  EXPECT_EQ(device.subVendor, 0);
  EXPECT_EQ(device.subDevice, 0);
}

TEST_F(PciDevices, WithoutADriverTellNone) { EXPECT_EQ(only({.driver = ""}).driver, ""); }

TEST_F(PciDevices, WithoutNumbersAreLeftOut) {
  putPci(tree_, {.address = "0000:00:01.0", .ids = "8086"});
  putPci(tree_, {.address = "0000:00:02.0", .ids = "18086:A352"});
  putPci(tree_, {.address = "0000:00:03.0", .ids = "8086:"});
  putPci(tree_, {.address = "0000:00:04.0", .code = "1010601"});
  putPci(tree_, {.address = "0000:00:05.0", .code = ""});
  tree_.makeFolder("/sys/bus/pci/devices/0000:00:06.0");
  tree_.link("/sys/bus/pci/devices/0000:00:07.0", "../nowhere");
  tree_.put("/sys/bus/pci/devices/0000:00:08.0", "a file");
  EXPECT_TRUE(devices().empty());
}

TEST_F(PciDevices, StandInTheOrderOfTheirAddresses) {
  for (const char* address : {"0000:02:00.0", "0000:00:1f.2", "0000:00:02.0"}) {
    putPci(tree_, {.address = address});
  }
  ASSERT_EQ(devices().size(), 3U);
  EXPECT_EQ(devices()[0].address, "0000:00:02.0");
  EXPECT_EQ(devices()[1].address, "0000:00:1f.2");
  EXPECT_EQ(devices()[2].address, "0000:02:00.0");
}

TEST_F(PciDevices, OfAManagedVolumeHaveALongerDomain) {
  EXPECT_EQ(deviceIdOf(only({.address = "10000:e1:00.0"})),
            "PCI\\VEN_8086&DEV_A352&SUBSYS_000117AA&REV_10\\10000:e1:00.0");
}

TEST_F(PciDevices, MayBeHundreds) {
  for (int i = 0; i < 600; ++i) {
    putPci(tree_, {.address = "0000:" + std::to_string(100 + i) + ":00.0"});
  }
  EXPECT_EQ(devices().size(), 600U);
}

TEST_F(PciDevices, HaveIdsOfTextEvenWithAStrangeAddress) {
  EXPECT_EQ(deviceIdOf(only({.address = "\xFF\xFE"})),
            "PCI\\VEN_8086&DEV_A352&SUBSYS_000117AA&REV_10\\??");
}

}  // namespace
}  // namespace veltrin
