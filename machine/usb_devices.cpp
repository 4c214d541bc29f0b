// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/usb_devices.h"

#include <array>
#include <cstdio>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "machine/device_folder.h"
#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr const char* kFolder = "/sys/bus/usb/devices/";

// Three numbers, as in "46d/c52b/1211"; nothing when one is above the most.
std::optional<std::array<std::uint16_t, 3>> triple(std::string_view text, int base,
                                                   std::uint64_t most) {
  std::array<std::uint16_t, 3> numbers{};
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const std::size_t slash = text.find('/');
    const auto number = wholeNumber(text.substr(0, slash), base);
    if (!number || *number > most || (slash == std::string_view::npos) != (i == 2)) {
      return std::nullopt;
    }
    numbers[i] = static_cast<std::uint16_t>(*number);
    text.remove_prefix(i == 2 ? 0 : slash + 1);
  }
  return numbers;
}

std::optional<UsbCode> codeIn(std::string_view text) {
  const auto numbers = triple(text, 10, 0xFF);
  if (!numbers) {
    return std::nullopt;
  }
  return UsbCode{static_cast<std::uint8_t>((*numbers)[0]), static_cast<std::uint8_t>((*numbers)[1]),
                 static_cast<std::uint8_t>((*numbers)[2])};
}

std::optional<UsbDevice> deviceAt(const FileTree& files, const std::string& address) {
  const std::string uevent = files.text(kFolder + address + "/uevent");
  const auto ids = triple(eventValue(uevent, "PRODUCT"), 16, 0xFFFF);
  const auto code = codeIn(eventValue(uevent, "TYPE"));
  if (!ids || !code) {
    return std::nullopt;
  }
  UsbDevice device;
  device.address = address;
  device.vendor = (*ids)[0];
  device.product = (*ids)[1];
  device.revision = (*ids)[2];
  device.code = *code;
  return device;
}

// The address of the device that an interface belongs to, "1-4" of "1-4:1.0". The root hub
// "usb1" has the interface "1-0:1.0".
std::string ownerOf(std::string_view interface) {
  const std::string_view device = interface.substr(0, interface.find(':'));
  return device.ends_with("-0") ? "usb" + std::string(device.substr(0, device.size() - 2))
                                : std::string(device);
}

using Interfaces = std::map<std::string, std::vector<UsbInterface>>;

Interfaces interfacesIn(const FileTree& files, const std::vector<std::string>& names) {
  Interfaces interfaces;
  for (const std::string& name : names) {
    if (name.find(':') == std::string::npos) {
      continue;
    }
    const std::string folder = kFolder + name;
    if (const auto code = codeIn(eventValue(files.text(folder + "/uevent"), "INTERFACE"))) {
      interfaces[ownerOf(name)].push_back({folder, *code});
    }
  }
  return interfaces;
}

}  // namespace

std::vector<UsbDevice> usbDevices(const FileTree& files) {
  const std::vector<std::string> names = files.names(kFolder);
  Interfaces interfaces = interfacesIn(files, names);
  std::vector<UsbDevice> devices;
  for (const std::string& name : names) {
    auto device = name.find(':') == std::string::npos ? deviceAt(files, name) : std::nullopt;
    if (device) {
      device->interfaces = std::move(interfaces[name]);
      devices.push_back(std::move(*device));
    }
  }
  return devices;
}

UsbCode purposeOf(const UsbDevice& device) {
  const bool told = device.code.kind != kUsbByInterface && device.code.kind != kUsbMiscellaneous;
  return told || device.interfaces.empty() ? device.code : device.interfaces.front().code;
}

std::string modaliasOf(const UsbDevice& device, const UsbCode& purpose) {
  char text[64];
  std::snprintf(text, sizeof text, "usb:v%04Xp%04Xd%04Xdc%02Xdsc%02Xdp%02X", device.vendor,
                device.product, device.revision, purpose.kind, purpose.subclass, purpose.protocol);
  return text;
}

UsbTexts usbTextsIn(const FileTree& files, const std::string& folder) {
  return {printable(files.line(folder + "/manufacturer")),
          printable(files.line(folder + "/product"))};
}

UsbTexts textsOf(const FileTree& files, const UsbDevice& device) {
  return usbTextsIn(files, kFolder + device.address);
}

std::string wholeName(const UsbTexts& texts) {
  return texts.model.empty() ? "" : joinedWords(texts.maker, texts.model);
}

std::string deviceIdOf(const UsbDevice& device) {
  char ids[32];
  std::snprintf(ids, sizeof ids, "USB\\VID_%04X&PID_%04X", device.vendor, device.product);
  return std::string(ids) + "\\" + printable(device.address);
}

}  // namespace veltrin
