// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/machine/device_tree.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kKeyboardSets =
    "B: PROP=0\nB: EV=120013\n"
    "B: KEY=402000000 3803078f800d001 feffffdfffefffff fffffffffffffffe\n\n";
constexpr const char* kMouseSets = "B: PROP=0\nB: EV=17\nB: KEY=1f0000 0 0 0 0\nB: REL=1943\n\n";

class WmiInput : public ::testing::Test {
 protected:
  WmiInput() { putDeviceDatabase(tree_); }

  // A device of input with these numbers, "0003 046d c31c".
  void put(const std::string& bus, const std::string& vendor, const std::string& product,
           const std::string& name, const std::string& sets, const std::string& folder = "") {
    list_ += "I: Bus=" + bus + " Vendor=" + vendor + " Product=" + product +
             " Version=0001\nN: Name=\"" + name + "\"\nS: Sysfs=" + folder + "\n" + sets;
    tree_.put("/proc/bus/input/devices", list_);
  }

  std::vector<std::string> keyboards(const std::string& property) const {
    return answered(win32Keyboard(sourcesOf(tree_)), property);
  }

  std::vector<std::string> pointers(const std::string& property) const {
    return answered(win32PointingDevice(sourcesOf(tree_)), property);
  }

  TemporaryTree tree_;
  std::string list_;
};

TEST_F(WmiInput, IsNoneOnAMachineWithoutAny) {
  EXPECT_THAT(keyboards("Name"), IsEmpty());
  EXPECT_THAT(pointers("Description"), IsEmpty());
}

TEST_F(WmiInput, TellsKeyboardsAndPointersApart) {
  put("0003", "ffff", "0001", "Keys", kKeyboardSets);
  put("0003", "ffff", "0002", "Mouse", kMouseSets);
  put("0019", "0000", "0001", "Power Button", "B: EV=3\nB: KEY=10000000000000 0\n\n");
  EXPECT_THAT(keyboards("Name"), ElementsAre("Keys"));
  EXPECT_THAT(pointers("Description"), ElementsAre("Mouse"));
  EXPECT_THAT(pointers("NumberOfButtons"), ElementsAre("5"));
}

TEST_F(WmiInput, OnAPlugIsNamedByTheDatabase) {
  put("0003", "046d", "c31c", "Logitech USB Keyboard", kKeyboardSets);
  EXPECT_THAT(keyboards("Name"), ElementsAre("Logitech, Inc. Keyboard K120"));
  EXPECT_THAT(keyboards("Manufacturer"), ElementsAre("Logitech, Inc."));
}

TEST_F(WmiInput, OfAnUnknownModelIsNamedByItsDriver) {
  put("0003", "046d", "4009", "Logitech K350", kKeyboardSets);
  EXPECT_THAT(keyboards("Name"), ElementsAre("Logitech K350"));
  EXPECT_THAT(keyboards("Manufacturer"), ElementsAre("Logitech, Inc."));
}

TEST_F(WmiInput, OfAnUnknownMakerOnAPlugTellsItsOwn) {
  tree_.put("/sys/devices/pci0000:00/usb1/1-4/manufacturer", "Example\n");
  put("0003", "fffe", "0001", "Mouse", kMouseSets,
      "/devices/pci0000:00/usb1/1-4/1-4:1.0/0003:FFFE:0001.0001/input/input7");
  EXPECT_THAT(pointers("Manufacturer"), ElementsAre("Example"));
}

TEST_F(WmiInput, LooksForItsMakerOnlyAmongDevices) {
  tree_.put("/sys/manufacturer", "Not this\n");
  tree_.put("/manufacturer", "Nor this\n");
  put("0003", "fffe", "0001", "Mouse", kMouseSets, "/devices/a/b");
  EXPECT_THAT(pointers("Manufacturer"), ElementsAre("null"));
}

TEST_F(WmiInput, OfPs2HasTheMakerOfItsFirmware) {
  tree_.put("/sys/devices/platform/i8042/serio0/firmware_id", "PNP: LEN0071 PNP0303\n");
  tree_.put("/sys/devices/platform/i8042/serio1/firmware_id", "PNP: PNP0F13\n");
  put("0011", "0001", "0001", "AT Translated Set 2 keyboard", kKeyboardSets,
      "/devices/platform/i8042/serio0/input/input3");
  put("0011", "0002", "0001", "PS/2 Generic Mouse", kMouseSets,
      "/devices/platform/i8042/serio1/input/input4");
  EXPECT_THAT(keyboards("Name"), ElementsAre("AT Translated Set 2 keyboard"));
  EXPECT_THAT(keyboards("Manufacturer"), ElementsAre("Lenovo Beijing Co. Ltd."));
  EXPECT_THAT(pointers("Manufacturer"), ElementsAre("null"));
}

TEST_F(WmiInput, OfPs2HasNoMakerByAnIdForAllMakers) {
  for (const char* id : {"PNP: PNP0303", "PNP: MSFT0001 PNP0303"}) {
    list_.clear();
    tree_.put("/sys/devices/platform/i8042/serio0/firmware_id", std::string(id) + "\n");
    put("0011", "0001", "0001", "A", kKeyboardSets, "/devices/platform/i8042/serio0/input/input3");
    EXPECT_THAT(keyboards("Manufacturer"), ElementsAre("null")) << id;
  }
}

TEST_F(WmiInput, OfPs2WithoutAFirmwareIdHasNoMaker) {
  tree_.put("/sys/devices/platform/i8042/serio0/firmware_id", "OF: LEN0071\n");
  put("0011", "046d", "c31c", "A", kKeyboardSets, "/devices/platform/i8042/serio0/input/input3");
  put("0011", "046d", "c31c", "B", kKeyboardSets);
  EXPECT_THAT(keyboards("Manufacturer"), ElementsAre("null", "null"));
  EXPECT_THAT(keyboards("Name"), ElementsAre("A", "B"));
}

TEST_F(WmiInput, OnI2cHasAVendorOfTheUsb) {
  put("0018", "06cb", "cd8b", "SYNA8004:00 06CB:CD8B Touchpad",
      "B: PROP=5\nB: EV=1b\nB: KEY=e520 10000 0 0 0 0\nB: ABS=2e0800000000003\n\n");
  EXPECT_THAT(pointers("Description"), ElementsAre("SYNA8004:00 06CB:CD8B Touchpad"));
  EXPECT_THAT(pointers("Manufacturer"), ElementsAre("Synaptics, Inc."));
  EXPECT_THAT(pointers("NumberOfButtons"), ElementsAre("1"));
  EXPECT_THAT(pointers("DeviceInterface"), ElementsAre("1"));
}

// Its numbers may be the radio's, which mean others.
TEST_F(WmiInput, OnTheRadioHasNoVendorOfTheUsb) {
  put("0005", "046d", "c31c", "Example Mouse", kMouseSets);
  EXPECT_THAT(pointers("Description"), ElementsAre("Example Mouse"));
  EXPECT_THAT(pointers("Manufacturer"), ElementsAre("null"));
}

TEST_F(WmiInput, WithoutANameIsNull) {
  put("0005", "0001", "0001", "", kMouseSets);
  EXPECT_THAT(pointers("Description"), ElementsAre("null"));
}

TEST_F(WmiInput, TellsTheInterfaceOfEachBus) {
  const std::pair<const char*, const char*> interfaces[] = {
      {"0001", "1"}, {"0003", "162"}, {"0004", "6"}, {"0005", "1"}, {"0010", "7"}, {"0011", "4"},
      {"0012", "1"}, {"0013", "3"},   {"0014", "1"}, {"0015", "1"}, {"0016", "1"}, {"0017", "8"},
      {"0018", "1"}, {"0019", "1"},   {"001a", "1"}, {"001b", "1"}, {"001c", "1"}, {"001d", "1"},
      {"001e", "1"}, {"001f", "1"},   {"0000", "2"}, {"0002", "2"}, {"ffff", "2"}};
  for (const auto& [bus, interface] : interfaces) {
    list_.clear();
    put(bus, "0001", "0001", "Mouse", kMouseSets);
    EXPECT_THAT(pointers("DeviceInterface"), ElementsAre(interface)) << bus;
  }
}

TEST_F(WmiInput, HasAFolderThatMayBeAsDeepAsItLikes) {
  std::string folder = "/devices";
  for (int i = 0; i < 5000; ++i) folder += "/a";
  put("0003", "fffe", "0001", "Mouse", kMouseSets, folder);
  EXPECT_THAT(pointers("Manufacturer"), ElementsAre("null"));
}

}  // namespace
}  // namespace veltrin
