// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/machine/device_tree.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WmiDevices : public ::testing::Test {
 protected:
  WmiDevices() { putDeviceDatabase(tree_); }

  // A sound card whose device lies in a folder of /sys/devices.
  void putCard(int number, const std::string& name, const std::string& folder) {
    const std::string entry = "/sys/class/sound/card" + std::to_string(number);
    cards_ += " " + std::to_string(number) + " [Id             ]: Driver - " + name + "\n";
    tree_.put("/proc/asound/cards", cards_);
    tree_.makeFolder(entry);
    tree_.link(entry + "/device", "../../../devices/" + folder);
    tree_.makeFolder("/sys/devices/" + folder);
  }

  std::vector<std::string> sound(const std::string& property) const {
    return answered(win32SoundDevice(sourcesOf(tree_)), property);
  }

  std::vector<std::string> hubs(const std::string& property) const {
    return answered(win32UsbHub(sourcesOf(tree_)), property);
  }

  TemporaryTree tree_;
  std::string cards_;
};

TEST_F(WmiDevices, AreNoneOnAMachineWithoutAny) {
  EXPECT_THAT(sound("Name"), IsEmpty());
  EXPECT_THAT(hubs("DeviceID"), IsEmpty());
}

TEST_F(WmiDevices, SoundCardsOnPciAreNamedByTheDatabase) {
  putCard(0, "HDA Intel PCH", "pci0000:00/0000:00:1f.3");
  tree_.put("/sys/devices/pci0000:00/0000:00:1f.3/modalias",
            "pci:v00008086d00000001sv000017AAsd00000001bc04sc03i00\n");
  EXPECT_THAT(sound("Caption"), ElementsAre("Intel Corporation Audio device"));
  EXPECT_THAT(sound("Name"), ElementsAre("HDA Intel PCH"));
}

TEST_F(WmiDevices, SoundCardsOfASoundProcessorAreNamedByItsPciDevice) {
  putCard(0, "sof-hda-dsp", "pci0000:00/0000:00:1f.3/skl_hda_dsp_generic");
  tree_.put("/sys/devices/pci0000:00/0000:00:1f.3/skl_hda_dsp_generic/modalias",
            "platform:skl_hda_dsp_generic\n");
  tree_.put("/sys/devices/pci0000:00/0000:00:1f.3/modalias",
            "pci:v00008086d00000001sv000017AAsd00000001bc04sc03i00\n");
  EXPECT_THAT(sound("Caption"), ElementsAre("Intel Corporation Audio device"));
}

TEST_F(WmiDevices, SoundCardsOnAPlugAreNamedByTheDatabaseOrThemselves) {
  putCard(0, "A", "pci0000:00/usb1/1-1/1-1:1.0");
  putCard(1, "B", "pci0000:00/usb1/1-2/1-2:1.0");
  putCard(2, "C", "pci0000:00/usb1/1-3/1-3:1.0");
  tree_.put("/sys/devices/pci0000:00/usb1/1-1/1-1:1.0/modalias", "usb:v046DpC31Cd1dc00\n");
  tree_.put("/sys/devices/pci0000:00/usb1/1-1/product", "Not this\n");
  tree_.put("/sys/devices/pci0000:00/usb1/1-2/1-2:1.0/modalias", "usb:vFFFEp0001d1dc00\n");
  tree_.put("/sys/devices/pci0000:00/usb1/1-2/product", "Headset\n");
  tree_.put("/sys/devices/pci0000:00/usb1/1-2/manufacturer", "Example\n");
  tree_.put("/sys/devices/pci0000:00/usb1/1-3/1-3:1.0/modalias", "usb:vFFFEp0001d1dc00\n");
  EXPECT_THAT(sound("Caption"),
              ElementsAre("Logitech, Inc. Keyboard K120", "Example Headset", "C"));
  EXPECT_THAT(sound("Name"), ElementsAre("A", "B", "C"));
}

TEST_F(WmiDevices, SoundCardsOfNoBusAreNamedByTheSoundSystem) {
  putCard(0, "Board sound", "platform/soc/sound");
  EXPECT_THAT(sound("Caption"), ElementsAre("Board sound"));
  EXPECT_THAT(sound("Name"), ElementsAre("Board sound"));
}

TEST_F(WmiDevices, SoundCardsWithoutANameAreNamedByTheirDevice) {
  tree_.link("/sys/class/sound/card0/device", "../../../devices/pci0000:00/0000:00:1f.3");
  tree_.put("/sys/devices/pci0000:00/0000:00:1f.3/modalias",
            "pci:v00008086d0000A352sv000017AAsd00000001bc04sc03i00\n");
  EXPECT_THAT(sound("Name"), ElementsAre("Intel Corporation SATA AHCI Controller"));
}

TEST_F(WmiDevices, SoundCardsOfWhichNothingIsKnownAreNull) {
  tree_.makeFolder("/sys/class/sound/card0");
  tree_.link("/sys/class/sound/card1/device", "../nowhere");
  EXPECT_THAT(sound("Caption"), ElementsAre("null", "null"));
  EXPECT_THAT(sound("Name"), ElementsAre("null", "null"));
}

// --- Hubs ---

TEST_F(WmiDevices, HubsAreThoseOfTheBoardAndThoseWithAPlug) {
  putUsb(tree_, "usb2", "1d6b/3/601", "9/0/3");
  putUsb(tree_, "2-1", "5e3/610/654", "9/0/1");
  putUsb(tree_, "2-1.1", "46d/c31c/6402", "0/0/0");
  putUsbInterface(tree_, "2-1.1:1.0", "9/0/0");
  putUsbTexts(tree_, "2-1", "GenesysLogic", "USB2.1 Hub");
  EXPECT_THAT(hubs("Description"),
              ElementsAre("GenesysLogic USB2.1 Hub", "Linux Foundation 3.0 root hub"));
  EXPECT_THAT(hubs("DeviceID"),
              ElementsAre("USB\\VID_05E3&PID_0610\\2-1", "USB\\VID_1D6B&PID_0003\\usb2"));
}

TEST_F(WmiDevices, HubsOfWhichNothingIsKnownAreNamedByTheirClass) {
  putUsb(tree_, "2-1", "fffe/610/654", "9/0/1");
  EXPECT_THAT(hubs("Description"), ElementsAre("Hub"));
}

TEST_F(WmiDevices, HubsMayBeHundreds) {
  for (int i = 0; i < 600; ++i) {
    putUsb(tree_, "1-" + std::to_string(i), "1d6b/3/601", "9/0/3");
  }
  EXPECT_EQ(hubs("Description").size(), 600U);
}

}  // namespace
}  // namespace veltrin
