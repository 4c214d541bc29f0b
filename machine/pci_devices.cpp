// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/pci_devices.h"

#include <cstdio>
#include <optional>
#include <string_view>
#include <utility>

#include "machine/device_folder.h"
#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr const char* kFolder = "/sys/bus/pci/devices/";

std::optional<std::uint16_t> hexNumber(std::string_view text) {
  const auto number = wholeNumber(text, 16);
  return number && *number <= 0xFFFF ? std::optional(static_cast<std::uint16_t>(*number))
                                     : std::nullopt;
}

// Two numbers, as in "8086:A352".
std::optional<std::pair<std::uint16_t, std::uint16_t>> hexPair(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) {
    return std::nullopt;
  }
  const auto left = hexNumber(text.substr(0, colon));
  const auto right = hexNumber(text.substr(colon + 1));
  return left && right ? std::optional(std::pair(*left, *right)) : std::nullopt;
}

// The kernel writes "0x10".
std::string revisionIn(std::string_view text) {
  const auto number = text.starts_with("0x") ? hexNumber(text.substr(2)) : std::nullopt;
  return number && *number <= 0xFF ? upperCase(text.substr(2)) : std::string();
}

// The numbers all stand in the file "uevent": one file to open instead of six.
std::optional<PciDevice> deviceAt(const FileTree& files, const std::string& address) {
  const std::string folder = kFolder + address;
  const std::string uevent = files.text(folder + "/uevent");
  const auto ids = hexPair(eventValue(uevent, "PCI_ID"));
  const auto code = wholeNumber(eventValue(uevent, "PCI_CLASS"), 16);
  if (!ids || !code || *code > 0xFFFFFF) {
    return std::nullopt;
  }
  PciDevice device;
  device.address = address;
  std::tie(device.vendor, device.device) = *ids;
  std::tie(device.subVendor, device.subDevice) =
      hexPair(eventValue(uevent, "PCI_SUBSYS_ID")).value_or(std::pair(0, 0));
  device.code = static_cast<std::uint32_t>(*code);
  device.revision = revisionIn(files.line(folder + "/revision"));
  device.modalias = eventValue(uevent, "MODALIAS");
  device.driver = eventValue(uevent, "DRIVER");
  device.powerState = files.line(folder + "/power_state");
  return device;
}

}  // namespace

std::vector<PciDevice> pciDevices(const FileTree& files) {
  std::vector<PciDevice> devices;
  for (const std::string& address : files.names(kFolder)) {
    if (auto device = deviceAt(files, address)) {
      devices.push_back(std::move(*device));
    }
  }
  return devices;
}

std::string deviceIdOf(const PciDevice& device) {
  char ids[64];
  std::snprintf(ids, sizeof ids, "PCI\\VEN_%04X&DEV_%04X&SUBSYS_%04X%04X", device.vendor,
                device.device, device.subDevice, device.subVendor);
  const std::string revision = device.revision.empty() ? "" : "&REV_" + device.revision;
  return ids + revision + "\\" + printable(device.address);
}

}  // namespace veltrin
