// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/machine/device_tree.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WmiControllers : public ::testing::Test {
 protected:
  std::vector<std::string> ide(const std::string& property) const {
    return answered(win32IdeController(sourcesOf(tree_)), property);
  }

  std::vector<std::string> floppy(const std::string& property) const {
    return answered(win32FloppyController(sourcesOf(tree_)), property);
  }

  void putPnp(const std::string& address, const std::string& id, const std::string& state) const {
    tree_.put("/sys/bus/pnp/devices/" + address + "/id", id + "\n");
    tree_.put("/sys/bus/pnp/devices/" + address + "/resources", "state = " + state + "\n");
  }

  TemporaryTree tree_;
};

TEST_F(WmiControllers, AreNoneOnAMachineWithoutBuses) {
  EXPECT_THAT(ide("Caption"), IsEmpty());
  EXPECT_THAT(floppy("Caption"), IsEmpty());
}

TEST_F(WmiControllers, OfSataAreToldInFull) {
  putDeviceDatabase(tree_);
  putPci(tree_);
  EXPECT_THAT(ide("Caption"), ElementsAre("Intel Corporation SATA AHCI Controller"));
  EXPECT_THAT(ide("Name"), ElementsAre("Intel Corporation SATA AHCI Controller"));
  EXPECT_THAT(ide("Availability"), ElementsAre("3"));
  EXPECT_THAT(ide("ConfigManagerErrorCode"), ElementsAre("0"));
  EXPECT_THAT(ide("PNPDeviceID"),
              ElementsAre("PCI\\VEN_8086&DEV_A352&SUBSYS_000117AA&REV_10\\0000:00:17.0"));
  EXPECT_THAT(ide("PowerManagementCapabilities"), ElementsAre("null"));
  EXPECT_THAT(ide("ProtocolSupported"), ElementsAre("6"));
  EXPECT_THAT(ide("Status"), ElementsAre("OK"));
}

TEST_F(WmiControllers, WithoutADatabaseHaveNoName) {
  putPci(tree_);
  EXPECT_THAT(ide("Caption"), ElementsAre("null"));
  EXPECT_THAT(ide("Name"), ElementsAre("null"));
}

TEST_F(WmiControllers, WithoutADriverDoNotWork) {
  putPci(tree_, {.driver = ""});
  EXPECT_THAT(ide("ConfigManagerErrorCode"), ElementsAre("28"));
  EXPECT_THAT(ide("Status"), ElementsAre("Error"));
  EXPECT_THAT(ide("Availability"), ElementsAre("null"));
}

TEST_F(WmiControllers, AreAvailableByTheirPower) {
  const std::pair<const char*, const char*> states[] = {
      {"D0", "3"},     {"D1", "15"},      {"D2", "15"},        {"D3hot", "15"},
      {"D3cold", "7"}, {"error", "null"}, {"unknown", "null"}, {"", "null"}};
  for (const auto& [power, availability] : states) {
    const TemporaryTree tree;
    putPci(tree, {.power = power});
    EXPECT_THAT(answered(win32IdeController(sourcesOf(tree)), "Availability"),
                ElementsAre(availability))
        << power;
  }
}

TEST_F(WmiControllers, OfHardDisksSpeakWhatTheirClassTells) {
  putPci(tree_, {.address = "0000:00:01.0", .code = "10000"});  // SCSI has a class of its own
  putPci(tree_, {.address = "0000:00:02.0", .code = "1018A"});
  putPci(tree_, {.address = "0000:00:03.0", .code = "10200"});
  putPci(tree_, {.address = "0000:00:04.0", .code = "10400"});
  putPci(tree_, {.address = "0000:00:05.0", .code = "10520"});
  putPci(tree_, {.address = "0000:00:06.0", .code = "10601"});
  putPci(tree_, {.address = "0000:00:07.0", .code = "10700"});
  putPci(tree_, {.address = "0000:00:08.0", .code = "10802"});
  putPci(tree_, {.address = "0000:00:09.0", .code = "18000"});
  putPci(tree_, {.address = "0000:00:0a.0", .code = "20600"});
  EXPECT_THAT(ide("ProtocolSupported"), ElementsAre("37", "6", "6", "1"));
  EXPECT_THAT(ide("PNPDeviceID"),
              ElementsAre("PCI\\VEN_8086&DEV_A352&SUBSYS_000117AA&REV_10\\0000:00:02.0",
                          "PCI\\VEN_8086&DEV_A352&SUBSYS_000117AA&REV_10\\0000:00:05.0",
                          "PCI\\VEN_8086&DEV_A352&SUBSYS_000117AA&REV_10\\0000:00:06.0",
                          "PCI\\VEN_8086&DEV_A352&SUBSYS_000117AA&REV_10\\0000:00:08.0"));
}

TEST_F(WmiControllers, OfAnOldBoardAreToldByPlugAndPlay) {
  putPnp("00:05", "PNP0600", "active");
  putPnp("00:06", "PNP0501", "active");
  tree_.link("/sys/bus/pnp/devices/00:05/driver", "../../../bus/pnp/drivers/pata");
  EXPECT_THAT(ide("Caption"), ElementsAre("IDE controller"));
  EXPECT_THAT(ide("PNPDeviceID"), ElementsAre("ACPI\\PNP0600\\00:05"));
  EXPECT_THAT(ide("ProtocolSupported"), ElementsAre("37"));
  EXPECT_THAT(ide("ConfigManagerErrorCode"), ElementsAre("0"));
  EXPECT_THAT(ide("Availability"), ElementsAre("null"));
}

TEST_F(WmiControllers, OfAnOldBoardWithoutADriverDoNotWork) {
  putPnp("00:05", "PNP0600", "active");
  EXPECT_THAT(ide("ConfigManagerErrorCode"), ElementsAre("28"));
}

// --- Floppy disks ---

TEST_F(WmiControllers, OfFloppiesWorkWhenTheDriverHasFoundDrives) {
  putPnp("00:04", "PNP0700", "active");
  putPnp("00:05", "PNP0600", "active");
  tree_.makeFolder("/sys/bus/platform/drivers/floppy/floppy.0");
  EXPECT_THAT(floppy("Caption"), ElementsAre("Standard floppy disk controller"));
  EXPECT_THAT(floppy("Availability"), ElementsAre("null"));
  EXPECT_THAT(floppy("ConfigManagerErrorCode"), ElementsAre("0"));
  EXPECT_THAT(floppy("ProtocolSupported"), ElementsAre("7"));
  EXPECT_THAT(floppy("Status"), ElementsAre("OK"));
}

TEST_F(WmiControllers, OfFloppiesHaveNoDriverThatFindsNoDrive) {
  putPnp("00:04", "PNP0700", "active");
  tree_.makeFolder("/sys/bus/platform/drivers/floppy/module");
  EXPECT_THAT(floppy("ConfigManagerErrorCode"), ElementsAre("28"));
  EXPECT_THAT(floppy("Status"), ElementsAre("Error"));
}

TEST_F(WmiControllers, OfFloppiesMayBeSwitchedOffInTheFirmware) {
  putPnp("00:04", "PNP0700", "disabled");
  tree_.makeFolder("/sys/bus/platform/drivers/floppy/floppy.0");
  EXPECT_THAT(floppy("ConfigManagerErrorCode"), ElementsAre("22"));
  EXPECT_THAT(floppy("Status"), ElementsAre("Error"));
}

TEST_F(WmiControllers, OfFloppiesMayBeOnPci) {
  putPci(tree_, {.code = "10200"});
  putPci(tree_, {.address = "0000:00:18.0", .code = "20200"});
  EXPECT_THAT(floppy("ConfigManagerErrorCode"), ElementsAre("0"));
  EXPECT_THAT(floppy("ProtocolSupported"), ElementsAre("7"));
  EXPECT_THAT(floppy("Availability"), ElementsAre("3"));
}

}  // namespace
}  // namespace veltrin
