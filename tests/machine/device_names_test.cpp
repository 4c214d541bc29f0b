// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/device_names.h"

#include <gtest/gtest.h>

#include "device_tree.h"

namespace veltrin {
namespace {

class DeviceNamesTest : public ::testing::Test {
 protected:
  DeviceNamesTest() { putDeviceDatabase(tree_); }

  std::string nameOfUsb() const {
    const auto devices = usbDevices(tree_.files());
    return devices.empty() ? "no device" : DeviceNames(tree_.files()).nameOf(devices[0]);
  }

  std::string nameOfPci(const std::string& modalias) const {
    return DeviceNames(tree_.files()).pciNameOf(modalias);
  }

  TemporaryTree tree_;
};

TEST_F(DeviceNamesTest, AreMakerAndModelOfTheDatabase) {
  EXPECT_EQ(nameOfPci("pci:v00008086d0000A352sv000017AAsd00000001bc01sc06i01"),
            "Intel Corporation SATA AHCI Controller");
}

TEST_F(DeviceNamesTest, AreToldInTheirParts) {
  DeviceNames names(tree_.files());
  const std::string known = "pci:v00008086d0000A352sv000017AAsd00000001bc01sc06i01";
  EXPECT_EQ(names.makerOf(known), "Intel Corporation");
  EXPECT_EQ(names.modelAloneOf(known), "SATA AHCI Controller");
  EXPECT_EQ(names.modelOf(known), "Intel Corporation SATA AHCI Controller");
  const std::string unknown = "pci:v00008086d00000001sv000017AAsd00000001bc01sc08i02";
  EXPECT_EQ(names.makerOf(unknown), "Intel Corporation");
  EXPECT_EQ(names.modelAloneOf(unknown), "");
  EXPECT_EQ(names.modelOf(unknown), "");
}

TEST_F(DeviceNamesTest, OfAnUnknownModelAreMakerAndSubclass) {
  EXPECT_EQ(nameOfPci("pci:v00008086d00000001sv000017AAsd00000001bc01sc08i02"),
            "Intel Corporation Non-Volatile memory controller");
}

TEST_F(DeviceNamesTest, OfAnUnknownSubclassAreMakerAndClass) {
  EXPECT_EQ(nameOfPci("pci:v00008086d00000001sv000017AAsd00000001bc01sc7Fi02"),
            "Intel Corporation Mass storage controller");
}

TEST_F(DeviceNamesTest, OfAnUnknownMakerAreTheClass) {
  EXPECT_EQ(nameOfPci("pci:v0000FFFEd00000001sv000017AAsd00000001bc01sc7Fi02"),
            "Mass storage controller");
}

TEST_F(DeviceNamesTest, OfAKnownMakerAloneAreEmpty) {
  EXPECT_EQ(nameOfPci("pci:v00008086d00000001sv000017AAsd00000001bcFFsc00i00"), "");
  EXPECT_EQ(nameOfPci(""), "");
}

TEST_F(DeviceNamesTest, OfAPlugAreTheDatabasesBeforeItsOwn) {
  putUsb(tree_, "1-4", "46d/c31c/6402", "0/0/0");
  putUsbTexts(tree_, "1-4", "Maker", "Model");
  EXPECT_EQ(nameOfUsb(), "Logitech, Inc. Keyboard K120");
}

TEST_F(DeviceNamesTest, OfAPlugThatTheDatabaseDoesNotKnowAreItsOwn) {
  putUsb(tree_, "1-4", "46d/1/6402", "0/0/0");
  putUsbTexts(tree_, "1-4", "Maker", "Model");
  EXPECT_EQ(nameOfUsb(), "Maker Model");
}

TEST_F(DeviceNamesTest, OfASilentPlugAreMakerAndClass) {
  putUsb(tree_, "1-4", "46d/1/6402", "239/2/1");
  putUsbInterface(tree_, "1-4:1.0", "14/1/0");
  EXPECT_EQ(nameOfUsb(), "Logitech, Inc. Video");
}

TEST_F(DeviceNamesTest, OfAPlugOfWhichNothingIsKnownAreEmpty) {
  putUsb(tree_, "1-4", "fffe/1/6402", "255/0/0");
  EXPECT_EQ(nameOfUsb(), "");
}

TEST_F(DeviceNamesTest, KnowWhichPlugsAreScanners) {
  putUsb(tree_, "1-4", "4a9/190f/100", "255/255/255");
  putUsb(tree_, "1-5", "46d/c31c/6402", "0/0/0");
  const auto devices = usbDevices(tree_.files());
  ASSERT_EQ(devices.size(), 2U);
  DeviceNames names(tree_.files());
  EXPECT_TRUE(names.isScanner(devices[0]));
  EXPECT_FALSE(names.isScanner(devices[1]));
}

TEST_F(DeviceNamesTest, AreEmptyWithoutADatabase) {
  const TemporaryTree bare;
  EXPECT_EQ(DeviceNames(bare.files()).pciNameOf("pci:v00008086d0000A352sv0sd0bc01sc06i01"), "");
}

TEST_F(DeviceNamesTest, ThatAreNoTextHaveQuestionMarks) {
  const TemporaryTree tree;
  tree.put("/usr/lib/udev/hwdb.bin",
           databaseFile({{"pci:v*", " ID_VENDOR_FROM_DATABASE", "\xFFxample"},
                         {"pci:v*", " ID_MODEL_FROM_DATABASE", "Card"}}));
  EXPECT_EQ(DeviceNames(tree.files()).pciNameOf("pci:v00008086"), "?xample Card");
}

}  // namespace
}  // namespace veltrin
