// SPDX-License-Identifier: GPL-3.0-or-later
// Whole machines, and what is left of them when parts of their files are missing or damaged.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/machine/device_tree.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;

constexpr const char* kInput =
    "I: Bus=0019 Vendor=0000 Product=0001 Version=0000\n"
    "N: Name=\"Power Button\"\n"
    "S: Sysfs=/devices/LNXSYSTM:00/LNXPWRBN:00/input/input0\n"
    "B: PROP=0\nB: EV=3\nB: KEY=10000000000000 0\n\n"
    "I: Bus=0019 Vendor=0000 Product=0005 Version=0000\n"
    "N: Name=\"Lid Switch\"\n"
    "B: PROP=0\nB: EV=21\nB: SW=1\n\n"
    "I: Bus=0011 Vendor=0001 Product=0001 Version=ab54\n"
    "N: Name=\"AT Translated Set 2 keyboard\"\n"
    "S: Sysfs=/devices/platform/i8042/serio0/input/input3\n"
    "B: PROP=0\nB: EV=120013\n"
    "B: KEY=402000000 3803078f800d001 feffffdfffefffff fffffffffffffffe\n\n"
    "I: Bus=0018 Vendor=06cb Product=cd8b Version=0100\n"
    "N: Name=\"SYNA8004:00 06CB:CD8B Touchpad\"\n"
    "S: Sysfs=/devices/pci0000:00/0000:00:15.0/i2c-0/0018:06CB:CD8B.0001/input/input9\n"
    "B: PROP=5\nB: EV=1b\nB: KEY=e520 10000 0 0 0 0\nB: ABS=2e0800000000003\n\n"
    "I: Bus=0003 Vendor=046d Product=c077 Version=0111\n"
    "N: Name=\"Logitech USB Optical Mouse\"\n"
    "S: Sysfs=/devices/pci0000:00/0000:00:14.0/usb1/1-2/1-2:1.0/0003:046D:C077.0002/input/input12\n"
    "B: PROP=0\nB: EV=17\nB: KEY=70000 0 0 0 0\nB: REL=903\n\n";

void makeDevices(const TemporaryTree& tree) {
  putDeviceDatabase(tree);
  putPci(tree);
  putPci(tree, {.address = "0000:00:1f.3",
                .code = "40300",
                .driver = "snd_hda_intel",
                .modalias = "pci:v00008086d0000A0C8sv000017AAsd00000001bc04sc03i00"});
  putPci(tree, {.address = "0000:04:00.0",
                .code = "10802",
                .ids = "144D:A80A",
                .driver = "nvme",
                .modalias = "pci:v0000144Dd0000A80Asv0000144Dsd0000A801bc01sc08i02"});
  putUsb(tree, "usb1", "1d6b/3/601", "9/0/1");
  putUsb(tree, "1-2", "46d/c077/7200", "0/0/0");
  putUsbInterface(tree, "1-2:1.0", "3/1/2");
  putUsbTexts(tree, "1-2", "Logitech", "USB Optical Mouse");
  putUsb(tree, "1-6", "5986/2113/4617", "239/2/1");
  putUsbInterface(tree, "1-6:1.0", "14/1/0");
  putUsbTexts(tree, "1-6", "Example", "Integrated Camera");
  tree.put("/proc/bus/input/devices", kInput);
  tree.put("/sys/devices/platform/i8042/serio0/firmware_id", "PNP: LEN0071 PNP0303\n");
  tree.put("/proc/asound/cards", " 0 [PCH            ]: HDA-Intel - HDA Intel PCH\n");
  tree.put("/sys/class/sound/card0/id", "PCH\n");
  tree.link("/sys/class/sound/card0/device", "../../../devices/pci0000:00/0000:00:1f.3");
  tree.put("/sys/bus/acpi/devices/LEN0071:00/modalias", "acpi:LEN0071:PNP0303:\n");
  tree.put("/sys/bus/acpi/devices/LEN0071:00/status", "15\n");
  tree.put("/sys/bus/pnp/devices/00:01/id", "LEN0071\nPNP0303\n");
  tree.put("/sys/bus/pnp/devices/00:01/resources", "state = active\n");
  tree.link("/sys/bus/pnp/devices/00:01/firmware_node", "../../LNXSYSTM:00/LEN0071:00");
  tree.put("/sys/bus/pnp/devices/00:04/id", "PNP0700\n");
  tree.put("/sys/bus/hdaudio/devices/hdaudioC0D0/chip_name", "ALC287\n");
  tree.put("/sys/bus/scsi/devices/0:0:0:0/type", "0\n");
}

struct AskedClass {
  const char* name;
  WmiAnswer (*answer)(const WmiSources&);
  std::vector<const char*> properties;  // that the report prints
};

const std::vector<AskedClass>& classes() {
  static const std::vector<AskedClass> kClasses{
      {"Win32_IDEController",
       win32IdeController,
       {"Caption", "Availability", "ConfigManagerErrorCode", "Name", "PNPDeviceID",
        "PowerManagementCapabilities", "ProtocolSupported", "Status"}},
      {"Win32_FloppyController",
       win32FloppyController,
       {"Caption", "Availability", "ConfigManagerErrorCode"}},
      {"Win32_SoundDevice", win32SoundDevice, {"Caption", "Name"}},
      {"Win32_USBHub", win32UsbHub, {"Description", "DeviceID"}},
      {"Win32_PnPSignedDriver", win32PnpSignedDriver, {"Description", "DeviceClass"}},
      {"Win32_Keyboard", win32Keyboard, {"Name", "Manufacturer"}},
      {"Win32_PointingDevice",
       win32PointingDevice,
       {"Description", "Manufacturer", "NumberOfButtons", "DeviceInterface"}},
  };
  return kClasses;
}

// All that the classes answer. Fails for a property that an object lacks.
std::vector<std::string> allOf(const TemporaryTree& tree) {
  std::vector<std::string> lines;
  for (const AskedClass& each : classes()) {
    for (const WmiObject& object : each.answer(sourcesOf(tree))) {
      std::string line = each.name;
      for (const char* property : each.properties) {
        EXPECT_TRUE(object.properties.contains(property)) << each.name << " " << property;
        const WmiValue& value = object.properties.at(property);
        line += " | " + (value.isNull() ? "null" : value.text());
      }
      lines.push_back(line);
    }
  }
  return lines;
}

// The plain files below a folder of the machine.
std::vector<std::string> filesOf(const TemporaryTree& tree) {
  std::vector<std::string> paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(tree.real(""))) {
    if (!entry.is_symlink() && entry.is_regular_file()) {
      paths.push_back(entry.path().string().substr(tree.real("").size()));
    }
  }
  return paths;
}

TEST(WmiDevicesOfALaptop, AreAllTold) {
  const TemporaryTree tree;
  makeDevices(tree);
  EXPECT_THAT(
      allOf(tree),
      ElementsAre(
          "Win32_IDEController | Intel Corporation SATA AHCI Controller | 3 | 0 | Intel "
          "Corporation SATA AHCI Controller | "
          "PCI\\VEN_8086&DEV_A352&SUBSYS_000117AA&REV_10\\0000:00:17.0 | null | 6 | OK",
          "Win32_IDEController | Non-Volatile memory controller | 3 | 0 | Non-Volatile memory "
          "controller | PCI\\VEN_144D&DEV_A80A&SUBSYS_000117AA&REV_10\\0000:04:00.0 | null | 1 | "
          "OK",
          "Win32_FloppyController | Standard floppy disk controller | null | 28",
          "Win32_SoundDevice | Intel Corporation Audio device | HDA Intel PCH",
          "Win32_USBHub | Linux Foundation 3.0 root hub | USB\\VID_1D6B&PID_0003\\usb1",
          "Win32_PnPSignedDriver | Intel Corporation SATA AHCI Controller | HDC",
          "Win32_PnPSignedDriver | Intel Corporation Audio device | MEDIA",
          "Win32_PnPSignedDriver | Non-Volatile memory controller | SCSIADAPTER",
          "Win32_PnPSignedDriver | Logitech USB Optical Mouse | HIDCLASS",
          "Win32_PnPSignedDriver | Example Integrated Camera | CAMERA",
          "Win32_PnPSignedDriver | Linux Foundation 3.0 root hub | USB",
          "Win32_PnPSignedDriver | Standard PS/2 Keyboard | KEYBOARD",
          "Win32_PnPSignedDriver | Standard floppy disk controller | FDC",
          "Win32_PnPSignedDriver | Disk drive | DISKDRIVE",
          "Win32_PnPSignedDriver | ALC287 | MEDIA",
          "Win32_Keyboard | AT Translated Set 2 keyboard | Lenovo Beijing Co. Ltd.",
          "Win32_PointingDevice | SYNA8004:00 06CB:CD8B Touchpad | Synaptics, Inc. | 1 | 1",
          "Win32_PointingDevice | Logitech USB Optical Mouse | Logitech, Inc. | 3 | 162"));
}

TEST(WmiDevicesOfALaptop, LackNoPropertyWhicheverFileIsMissing) {
  const TemporaryTree whole;
  makeDevices(whole);
  for (const std::string& path : filesOf(whole)) {
    const TemporaryTree tree;
    makeDevices(tree);
    ASSERT_TRUE(std::filesystem::remove(tree.real(path))) << path;
    EXPECT_LE(allOf(tree).size(), allOf(whole).size()) << path;
  }
}

TEST(WmiDevicesOfALaptop, LackNoPropertyWhicheverFolderIsMissing) {
  for (const char* folder : {"/proc", "/sys/bus", "/sys/bus/pci", "/sys/bus/usb", "/sys/bus/acpi",
                             "/sys/bus/pnp", "/sys/class", "/sys/devices", "/usr"}) {
    const TemporaryTree tree;
    makeDevices(tree);
    const std::size_t before = allOf(tree).size();
    ASSERT_GT(std::filesystem::remove_all(tree.real(folder)), 0U) << folder;
    EXPECT_LE(allOf(tree).size(), before) << folder;
  }
}

// Whatever stands in the files, the answers are text that can be shown.
TEST(WmiDevicesOfALaptop, AreTextWhateverStandsInTheFiles) {
  const std::string long_(200'000, '\xC3');
  for (const std::string& rubbish :
       {std::string(), std::string("\n\n\n"), std::string("\0\xFF\xFE=:\n", 6),
        std::string("99999999999999999999999999"), long_}) {
    const TemporaryTree tree;
    makeDevices(tree);
    for (const std::string& path : filesOf(tree)) tree.put(path, rubbish);
    for (const std::string& line : allOf(tree)) {
      EXPECT_EQ(line.find_first_of("\xC3\xFF\xFE\n"), std::string::npos) << line;
    }
  }
}

}  // namespace
}  // namespace veltrin
