// SPDX-License-Identifier: GPL-3.0-or-later
// The devices on the USB of a machine.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

// What a device or an interface is for (USB 2.0, sections 9.6.1 and 9.6.5; the codes are
// those of the USB-IF's list of defined classes).
struct UsbCode {
  std::uint8_t kind = 0;
  std::uint8_t subclass = 0;
  std::uint8_t protocol = 0;
  friend bool operator==(const UsbCode&, const UsbCode&) = default;
};

inline constexpr std::uint8_t kUsbHub = 0x09;
// Two classes of devices whose interfaces tell what they are for.
inline constexpr std::uint8_t kUsbByInterface = 0x00;
inline constexpr std::uint8_t kUsbMiscellaneous = 0xEF;

struct UsbInterface {
  std::string folder;  // "/sys/bus/usb/devices/1-4:1.0"
  UsbCode code;
};

struct UsbDevice {
  std::string address;  // "1-4.2": bus and ports; a root hub is "usb1"
  // idVendor, idProduct and bcdDevice of its descriptor.
  std::uint16_t vendor = 0;
  std::uint16_t product = 0;
  std::uint16_t revision = 0;
  UsbCode code;
  std::vector<UsbInterface> interfaces;
};

// In the order of their addresses. A device that does not tell its numbers is left out.
std::vector<UsbDevice> usbDevices(const FileTree& files);

// What it is for: its own code, or its first interface's where that tells.
UsbCode purposeOf(const UsbDevice& device);

// What the hardware database knows a device with this purpose by.
std::string modaliasOf(const UsbDevice& device, const UsbCode& purpose);

// What the device calls itself. The kernel may keep whoever asks waiting while it resets the
// device, so it is read on demand only. Empty where it does not tell.
struct UsbTexts {
  std::string maker;
  std::string model;
};
UsbTexts usbTextsIn(const FileTree& files, const std::string& folder);
UsbTexts textsOf(const FileTree& files, const UsbDevice& device);

// Maker and model; empty without a model.
std::string wholeName(const UsbTexts& texts);

// Its name among the devices of Windows: "USB\VID_1D6B&PID_0003\usb2", with the address
// behind the last backslash.
std::string deviceIdOf(const UsbDevice& device);

}  // namespace veltrin
