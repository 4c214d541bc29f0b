// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/pnp_devices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;

class PnpDevices : public ::testing::Test {
 protected:
  void putPnp(const std::string& address, const std::string& ids, const std::string& state) {
    tree_.put("/sys/bus/pnp/devices/" + address + "/id", ids);
    tree_.put("/sys/bus/pnp/devices/" + address + "/resources", state);
  }

  void putAcpi(const std::string& address, const std::string& modalias,
               const std::string& status = "") {
    tree_.put("/sys/bus/acpi/devices/" + address + "/modalias", modalias + "\n");
    if (!status.empty()) {
      tree_.put("/sys/bus/acpi/devices/" + address + "/status", status + "\n");
    }
  }

  std::vector<std::string> acpiAddresses() const {
    std::vector<std::string> addresses;
    for (const PnpDevice& device : acpiDevices(tree_.files())) {
      addresses.push_back(device.address);
    }
    return addresses;
  }

  TemporaryTree tree_;
};

TEST_F(PnpDevices, AreNoneWithoutTheirBuses) {
  EXPECT_TRUE(pnpDevices(tree_.files()).empty());
  EXPECT_TRUE(acpiDevices(tree_.files()).empty());
}

TEST_F(PnpDevices, TellTheirIdsTheirStateAndTheirDriver) {
  putPnp("00:03", "PNP0501\nPNP0500\n", "state = active\nio 0x3f8-0x3ff\n");
  tree_.link("/sys/bus/pnp/devices/00:03/driver", "../../../bus/pnp/drivers/serial");
  tree_.link("/sys/bus/pnp/devices/00:03/firmware_node", "../../LNXSYSTM:00/PNP0501:00");
  putPnp("00:04", "PNP0700\n", "state = disabled\n");
  const auto found = pnpDevices(tree_.files());
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].address, "00:03");
  EXPECT_THAT(found[0].ids, ElementsAre("PNP0501", "PNP0500"));
  EXPECT_FALSE(found[0].disabled);
  EXPECT_EQ(found[0].driver, "serial");
  EXPECT_TRUE(found[0].inAcpi);
  EXPECT_TRUE(found[1].disabled);
  EXPECT_EQ(found[1].driver, "");
  EXPECT_FALSE(found[1].inAcpi);
}

TEST_F(PnpDevices, HaveAnIdOnlyAsAWhole) {
  PnpDevice device;
  device.ids = {"PNP0501", "PNP0500"};
  EXPECT_TRUE(device.has("PNP0500"));
  EXPECT_FALSE(device.has("PNP050"));
}

TEST_F(PnpDevices, OfAcpiHaveTheIdsOfTheirModalias) {
  putAcpi("LEN0071:00", "acpi:LEN0071:PNP0303:", "15");
  tree_.put("/sys/bus/acpi/devices/LEN0071:00/description", "Keys of \xFFxample\n");
  const auto found = acpiDevices(tree_.files());
  ASSERT_EQ(found.size(), 1U);
  EXPECT_THAT(found[0].ids, ElementsAre("LEN0071", "PNP0303"));
  EXPECT_EQ(found[0].description, "Keys of ?xample");
  EXPECT_TRUE(found[0].inAcpi);
}

TEST_F(PnpDevices, OfAcpiAreThereWhenTheirStateSaysSoOrNothing) {
  putAcpi("PNP0001:00", "acpi:PNP0001:", "15");
  putAcpi("PNP0001:01", "acpi:PNP0001:", "0");
  putAcpi("PNP0001:02", "acpi:PNP0001:", "14");
  putAcpi("PNP0001:03", "acpi:PNP0001:", "1");
  putAcpi("PNP0001:04", "acpi:PNP0001:");
  EXPECT_THAT(acpiAddresses(), ElementsAre("PNP0001:00", "PNP0001:03", "PNP0001:04"));
}

TEST_F(PnpDevices, OfAcpiWithoutAnIdAreLeftOut) {
  putAcpi("device:1f", "acpi:PNP0001:");
  putAcpi("A:00", "");
  putAcpi("B:00", "acpi:");
  putAcpi("C:00", "pci:v0001:");
  tree_.makeFolder("/sys/bus/acpi/devices/D:00");
  tree_.link("/sys/bus/acpi/devices/E:00", "nowhere");
  EXPECT_THAT(acpiAddresses(), ElementsAre());
}

TEST_F(PnpDevices, OfAcpiMayLackTheLastColon) {
  putAcpi("A:00", "acpi:PNP0001");
  ASSERT_THAT(acpiAddresses(), ElementsAre("A:00"));
  EXPECT_THAT(acpiDevices(tree_.files())[0].ids, ElementsAre("PNP0001"));
}

}  // namespace
}  // namespace veltrin
