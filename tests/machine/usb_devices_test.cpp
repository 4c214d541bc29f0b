// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/usb_devices.h"

#include <gtest/gtest.h>

#include "device_tree.h"

namespace veltrin {
namespace {

class UsbDevices : public ::testing::Test {
 protected:
  std::vector<UsbDevice> devices() const { return usbDevices(tree_.files()); }

  UsbDevice only() const {
    const auto found = devices();
    EXPECT_EQ(found.size(), 1U);
    return found.empty() ? UsbDevice() : found[0];
  }

  TemporaryTree tree_;
};

TEST_F(UsbDevices, AreNoneWithoutTheBus) { EXPECT_TRUE(devices().empty()); }

TEST_F(UsbDevices, TellTheirNumbers) {
  putUsb(tree_, "1-4.2", "46d/c31c/6402", "239/2/1");
  const UsbDevice device = only();
  EXPECT_EQ(device.address, "1-4.2");
  EXPECT_EQ(device.vendor, 0x046D);
  EXPECT_EQ(device.product, 0xC31C);
  EXPECT_EQ(device.revision, 0x6402);
  EXPECT_EQ(device.code, (UsbCode{0xEF, 2, 1}));
  EXPECT_TRUE(device.interfaces.empty());
}

TEST_F(UsbDevices, HaveTheirInterfaces) {
  putUsb(tree_, "1-4", "46d/c31c/6402", "0/0/0");
  putUsbInterface(tree_, "1-4:1.0", "3/1/1");
  putUsbInterface(tree_, "1-4:1.1", "3/0/0");
  putUsbInterface(tree_, "1-4.1:1.0", "8/6/80");
  const UsbDevice device = only();
  ASSERT_EQ(device.interfaces.size(), 2U);
  EXPECT_EQ(device.interfaces[0].folder, "/sys/bus/usb/devices/1-4:1.0");
  EXPECT_EQ(device.interfaces[0].code, (UsbCode{3, 1, 1}));
  EXPECT_EQ(device.interfaces[1].code, (UsbCode{3, 0, 0}));
}

TEST_F(UsbDevices, ThatAreRootHubsHaveInterfacesOfPortZero) {
  putUsb(tree_, "usb2", "1d6b/3/601", "9/0/3");
  putUsbInterface(tree_, "2-0:1.0", "9/0/0");
  EXPECT_EQ(only().interfaces.size(), 1U);
}

TEST_F(UsbDevices, WithoutNumbersAreLeftOut) {
  putUsb(tree_, "1-1", "46d/c31c", "0/0/0");
  putUsb(tree_, "1-2", "46d/c31c/1/2", "0/0/0");
  putUsb(tree_, "1-3", "1046d/c31c/1", "0/0/0");
  putUsb(tree_, "1-4", "46d/c31c/1", "256/0/0");
  putUsb(tree_, "1-5", "46d/c31c/1", "");
  tree_.makeFolder("/sys/bus/usb/devices/1-6");
  tree_.link("/sys/bus/usb/devices/1-7", "nowhere");
  EXPECT_TRUE(devices().empty());
}

TEST_F(UsbDevices, PassOverInterfacesWithoutACode) {
  putUsb(tree_, "1-4", "46d/c31c/6402", "0/0/0");
  putUsbInterface(tree_, "1-4:1.0", "3/1/300");
  tree_.makeFolder("/sys/bus/usb/devices/1-4:1.1");
  EXPECT_TRUE(only().interfaces.empty());
}

TEST_F(UsbDevices, AreForWhatTheirOwnCodeTells) {
  putUsb(tree_, "1-4", "46d/1/1", "224/1/1");
  putUsbInterface(tree_, "1-4:1.0", "3/1/1");
  EXPECT_EQ(purposeOf(only()), (UsbCode{0xE0, 1, 1}));
}

TEST_F(UsbDevices, AreForWhatTheirFirstInterfaceTells) {
  for (const char* type : {"0/0/0", "239/2/1"}) {
    putUsb(tree_, "1-4", "46d/1/1", type);
    putUsbInterface(tree_, "1-4:1.0", "14/1/0");
    putUsbInterface(tree_, "1-4:1.2", "1/1/0");
    EXPECT_EQ(purposeOf(only()), (UsbCode{14, 1, 0})) << type;
  }
}

TEST_F(UsbDevices, WithoutInterfacesKeepTheirOwnCode) {
  putUsb(tree_, "1-4", "46d/1/1", "239/2/1");
  EXPECT_EQ(purposeOf(only()), (UsbCode{0xEF, 2, 1}));
}

TEST_F(UsbDevices, AreKnownToTheDatabaseByTheirNumbers) {
  putUsb(tree_, "1-4", "46d/c31c/6402", "0/0/0");
  EXPECT_EQ(modaliasOf(only(), {0x0E, 1, 0xFE}), "usb:v046DpC31Cd6402dc0Edsc01dpFE");
}

TEST_F(UsbDevices, HaveIdsWithTheirAddress) {
  putUsb(tree_, "usb2", "1d6b/3/601", "9/0/3");
  EXPECT_EQ(deviceIdOf(only()), "USB\\VID_1D6B&PID_0003\\usb2");
}

TEST_F(UsbDevices, CallThemselvesInPrintableTexts) {
  putUsb(tree_, "1-4", "46d/c31c/6402", "0/0/0");
  putUsbTexts(tree_, "1-4", "Ex\xFFmple", " Plug\x01Seven ");
  const UsbTexts texts = textsOf(tree_.files(), only());
  EXPECT_EQ(texts.maker, "Ex?mple");
  EXPECT_EQ(texts.model, "Plug Seven");
  EXPECT_EQ(wholeName(texts), "Ex?mple Plug Seven");
}

TEST_F(UsbDevices, WithoutAModelHaveNoName) { EXPECT_EQ(wholeName({"Example", ""}), ""); }

}  // namespace
}  // namespace veltrin
