// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/machine/device_tree.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WmiPnp : public ::testing::Test {
 protected:
  WmiPnp() { putDeviceDatabase(tree_); }

  // "Description: DeviceClass" of each object.
  std::vector<std::string> devices() const {
    const WmiAnswer answer = win32PnpSignedDriver(sourcesOf(tree_));
    std::vector<std::string> texts = answered(answer, "Description");
    const std::vector<std::string> classes = answered(answer, "DeviceClass");
    for (std::size_t i = 0; i < texts.size(); ++i) {
      texts[i] += ": " + classes[i];
    }
    return texts;
  }

  void putAcpi(const std::string& address, const std::string& modalias) const {
    tree_.put("/sys/bus/acpi/devices/" + address + "/modalias", modalias + "\n");
  }

  TemporaryTree tree_;
};

TEST_F(WmiPnp, AreNoneOnAMachineWithoutBuses) { EXPECT_THAT(devices(), IsEmpty()); }

TEST_F(WmiPnp, AreThoseOfPciByTheirClass) {
  putPci(tree_);
  putPci(tree_, {.address = "0000:01:00.0", .code = "FF0000", .modalias = "pci:v0000FFFE"});
  EXPECT_THAT(devices(), ElementsAre("Intel Corporation SATA AHCI Controller: HDC", "null: null"));
}

TEST_F(WmiPnp, AreThoseOfTheUsbByTheirOwnClass) {
  putUsb(tree_, "usb1", "1d6b/3/601", "9/0/3");
  EXPECT_THAT(devices(), ElementsAre("Linux Foundation 3.0 root hub: USB"));
}

TEST_F(WmiPnp, OfTheUsbHaveTheClassOfTheFirstInterfaceThatTellsOne) {
  putUsb(tree_, "1-4", "46d/c31c/6402", "239/2/1");
  putUsbInterface(tree_, "1-4:1.0", "10/0/0");
  putUsbInterface(tree_, "1-4:1.1", "255/1/0");
  putUsbInterface(tree_, "1-4:1.2", "14/1/0");
  putUsbInterface(tree_, "1-4:1.3", "1/1/0");
  EXPECT_THAT(devices(), ElementsAre("Logitech, Inc. Keyboard K120: CAMERA"));
}

TEST_F(WmiPnp, OfTheUsbWithTheirMakersCodeAreWhatTheirDriverMakesOfThem) {
  const std::pair<const char*, const char*> folders[] = {
      {"net", "NET"}, {"ttyUSB0", "PORTS"}, {"power", "null"}, {"network", "null"}};
  for (const auto& [folder, setupClass] : folders) {
    const TemporaryTree tree;
    putDeviceDatabase(tree);
    putUsb(tree, "1-4", "46d/c31c/6402", "0/0/0");
    putUsbInterface(tree, "1-4:1.0", "255/255/0");
    tree.makeFolder("/sys/bus/usb/devices/1-4:1.0/" + std::string(folder));
    EXPECT_THAT(answered(win32PnpSignedDriver(sourcesOf(tree)), "DeviceClass"),
                ElementsAre(setupClass))
        << folder;
  }
}

TEST_F(WmiPnp, OfTheUsbOfWhichNothingIsKnownAreNull) {
  putUsb(tree_, "1-4", "fffe/1/1", "255/0/0");
  EXPECT_THAT(devices(), ElementsAre("null: null"));
}

TEST_F(WmiPnp, KnowScannersByTheDatabase) {
  putUsb(tree_, "1-4", "4a9/190f/100", "0/0/0");
  putUsbInterface(tree_, "1-4:1.0", "255/0/255");
  putUsbTexts(tree_, "1-4", "Example", "Scanner Two");
  EXPECT_THAT(devices(), ElementsAre("Example Scanner Two: IMAGE"));
}

TEST_F(WmiPnp, KnowAVirtualDeviceByTheTypeThatPciHasForIt) {
  tree_.put("/sys/devices/platform/soc/modalias", "of:Nvirtio\n");
  tree_.put("/sys/devices/platform/soc/virtio0/modalias", "virtio:d00000001v554D4551\n");
  tree_.link("/sys/bus/virtio/devices/virtio0", "../../../devices/platform/soc/virtio0");
  EXPECT_THAT(devices(), ElementsAre("Red Hat, Inc. Virtio 1.0 network device: NET"));
}

TEST_F(WmiPnp, TellAVirtualDeviceOfPciOnce) {
  putPci(tree_, {.code = "20000", .modalias = "pci:v00001AF4d00001041sv0sd0bc02sc00i00"});
  tree_.put("/sys/devices/pci0000:00/0000:00:17.0/virtio0/modalias", "virtio:d00000001v00001AF4\n");
  tree_.link("/sys/bus/virtio/devices/virtio0", "../../../devices/pci0000:00/0000:00:17.0/virtio0");
  EXPECT_THAT(devices(), ElementsAre("Red Hat, Inc. Virtio 1.0 network device: NET"));
}

TEST_F(WmiPnp, PassOverVirtualDevicesWithoutAType) {
  tree_.put("/sys/bus/virtio/devices/virtio0/modalias", "virtio:dX\n");
  tree_.put("/sys/bus/virtio/devices/virtio1/modalias", "other:d00000001v1\n");
  tree_.makeFolder("/sys/bus/virtio/devices/virtio2");
  tree_.link("/sys/bus/virtio/devices/virtio3", "nowhere");
  EXPECT_THAT(devices(), IsEmpty());
}

TEST_F(WmiPnp, AreThoseOfTheFirmwareThatHaveAnIdOfAllMakersOrADescription) {
  putAcpi("LEN0071:00", "acpi:LEN0071:PNP0303:");
  putAcpi("EXMP0001:00", "acpi:EXMP0001:");
  tree_.put("/sys/bus/acpi/devices/EXMP0001:00/description", "Fan of the board\n");
  putAcpi("EXMP0002:00", "acpi:EXMP0002:");
  EXPECT_THAT(devices(), ElementsAre("Fan of the board: null", "Standard PS/2 Keyboard: KEYBOARD"));
}

TEST_F(WmiPnp, TellADeviceOfThatBothBusesKnowOnce) {
  putAcpi("PNP0501:00", "acpi:PNP0501:");
  tree_.put("/sys/bus/pnp/devices/00:03/id", "PNP0501\n");
  tree_.link("/sys/bus/pnp/devices/00:03/firmware_node", "../../LNXSYSTM:00/PNP0501:00");
  tree_.put("/sys/bus/pnp/devices/00:04/id", "PNP0400\n");
  EXPECT_THAT(devices(), ElementsAre("Communications Port: PORTS", "Printer Port: PORTS"));
}

TEST_F(WmiPnp, AreDrivesByTheirType) {
  tree_.put("/sys/bus/scsi/devices/0:0:0:0/type", "0\n");
  tree_.put("/sys/bus/scsi/devices/1:0:0:0/type", "5\n");
  tree_.put("/sys/bus/scsi/devices/2:0:0:0/type", "x\n");
  tree_.put("/sys/bus/scsi/devices/3:0:0:0/type", "13\n");
  tree_.makeFolder("/sys/bus/scsi/devices/host0");
  EXPECT_THAT(devices(), ElementsAre("Disk drive: DISKDRIVE", "CD-ROM Drive: CDROM"));
}

TEST_F(WmiPnp, AreTheConvertersOfSound) {
  tree_.put("/sys/bus/hdaudio/devices/hdaudioC0D0/vendor_name", "Realtek\n");
  tree_.put("/sys/bus/hdaudio/devices/hdaudioC0D0/chip_name", "ALC287\n");
  EXPECT_THAT(devices(), ElementsAre("Realtek ALC287: MEDIA"));
}

TEST_F(WmiPnp, AreTextEvenWhereTheMachineTellsNone) {
  putUsb(tree_, "1-4", "fffe/1/1", "255/0/0");
  putUsbTexts(tree_, "1-4", "\xC3", "\xFFPlug\x1B");
  EXPECT_THAT(devices(), ElementsAre("? ?Plug: null"));
}

TEST_F(WmiPnp, MayBeHundreds) {
  for (int i = 0; i < 600; ++i) {
    putPci(tree_, {.address = "0000:" + std::to_string(100 + i) + ":00.0"});
  }
  EXPECT_EQ(devices().size(), 600U);
}

}  // namespace
}  // namespace veltrin
