// SPDX-License-Identifier: GPL-3.0-or-later
// Keyboards and pointing devices.
#include <cstdio>
#include <string_view>

#include "machine/device_names.h"
#include "machine/fact_text.h"
#include "machine/input_devices.h"
#include "machine/usb_devices.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

// DeviceInterface: what a pointing device is plugged into.
enum Interface : int {
  kOther = 1,
  kUnknown = 2,
  kSerial = 3,
  kPs2 = 4,
  kHpHil = 6,
  kBusMouse = 7,
  kAdb = 8,
  kUsb = 162,
};

Interface interfaceOf(const InputDevice& device) {
  switch (static_cast<InputBus>(device.bus)) {
    case InputBus::Usb:
      return kUsb;
    case InputBus::I8042:
      return kPs2;
    case InputBus::Rs232:
      return kSerial;
    case InputBus::Hil:
      return kHpHil;
    case InputBus::Isa:  // a mouse with a card of its own
      return kBusMouse;
    case InputBus::Adb:
      return kAdb;
    case InputBus::Pci:
    case InputBus::Bluetooth:
    case InputBus::Virtual:
    case InputBus::XtKeyboard:
    case InputBus::Gameport:
    case InputBus::ParallelPort:
    case InputBus::Amiga:
    case InputBus::I2c:
    case InputBus::Host:
    case InputBus::Gsc:
    case InputBus::Atari:
    case InputBus::Spi:
    case InputBus::Rmi:
    case InputBus::Cec:
    case InputBus::IntelSensorHub:
      return kOther;
  }
  return kUnknown;
}

bool isOn(const InputDevice& device, InputBus bus) {
  return device.bus == static_cast<std::uint16_t>(bus);
}

// The database knows a device of input by the numbers that its bus gives it. HID devices on I2C
// have vendors of the USB (HID over I2C 1.0, section 5.1.1).
std::string usbModaliasOf(const InputDevice& device) {
  if (!isOn(device, InputBus::Usb) && !isOn(device, InputBus::I2c)) {
    return {};
  }
  char text[32];
  std::snprintf(text, sizeof text, "usb:v%04Xp%04X", device.vendor, device.product);
  return text;
}

// The folder around another one; empty around the outermost that is worth a look.
std::string folderAround(const std::string& folder) {
  const std::size_t slash = folder.rfind('/');
  const std::string around = folder.substr(0, slash == std::string::npos ? 0 : slash);
  return around.starts_with("/sys/devices/") ? around : std::string();
}

// A line of a file of the device or of a folder around it; empty when there is none. A folder
// of /sys/devices lies less deep than this.
std::string lineAround(const FileTree& files, const InputDevice& device, const char* file) {
  constexpr int kDeepest = 40;
  std::string folder = device.folder;
  for (int depth = 0; depth < kDeepest && !folder.empty(); ++depth) {
    if (std::string line = printable(files.line(folder + "/" + file)); !line.empty()) {
      return line;
    }
    folder = folderAround(folder);
  }
  return {};
}

// Who built a PS/2 device stands in the first ID that the firmware has for it,
// "PNP: LEN0071 PNP0303". IDs that begin with PNP or MSFT are for the devices of all makers.
std::string makerByFirmware(const FileTree& files, const InputDevice& device, DeviceNames& names) {
  const std::string line = lineAround(files, device, "firmware_id");
  const auto words = wordsOf(line);
  if (words.size() < 2 || words[0] != "PNP:" || words[1].starts_with("PNP") ||
      words[1].starts_with("MSFT")) {
    return {};
  }
  return names.makerOf("acpi:" + std::string(words[1]) + ":");
}

std::string makerOf(const FileTree& files, const InputDevice& device, DeviceNames& names) {
  if (isOn(device, InputBus::I8042)) {
    return makerByFirmware(files, device, names);
  }
  std::string maker = names.makerOf(usbModaliasOf(device));
  if (maker.empty() && isOn(device, InputBus::Usb)) {
    maker = lineAround(files, device, "manufacturer");
  }
  return maker;
}

// By the database, else as its driver calls it, which is what the device tells of itself.
std::string nameOf(const InputDevice& device, DeviceNames& names) {
  const std::string known = names.modelOf(usbModaliasOf(device));
  return known.empty() ? device.name : known;
}

}  // namespace

// Name: the hardware database by the numbers in /proc/bus/input/devices, else the name in it.
// Manufacturer: the hardware database, else "manufacturer" of the USB device; of a PS/2 device
// its "firmware_id".
WmiAnswer win32Keyboard(const WmiSources& sources) {
  WmiAnswer answer;
  DeviceNames names(sources.files);
  for (const InputDevice& device : inputDevices(sources.files)) {
    if (isKeyboard(device)) {
      answer.push_back({{
          {"Name", orNull(nameOf(device, names))},
          {"Manufacturer", orNull(makerOf(sources.files, device, names))},
      }});
    }
  }
  return answer;
}

// Description and Manufacturer: as of a keyboard. NumberOfButtons: the buttons in the device's
// set of keys. DeviceInterface: its bus. Both in /proc/bus/input/devices.
WmiAnswer win32PointingDevice(const WmiSources& sources) {
  WmiAnswer answer;
  DeviceNames names(sources.files);
  for (const InputDevice& device : inputDevices(sources.files)) {
    if (isPointer(device)) {
      answer.push_back({{
          {"Description", orNull(nameOf(device, names))},
          {"Manufacturer", orNull(makerOf(sources.files, device, names))},
          {"NumberOfButtons", static_cast<int>(buttonsOf(device))},
          {"DeviceInterface", static_cast<int>(interfaceOf(device))},
      }});
    }
  }
  return answer;
}

}  // namespace veltrin
