// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/pnp_devices.h"

#include <algorithm>
#include <utility>

#include "machine/device_folder.h"
#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr const char* kPnpFolder = "/sys/bus/pnp/devices/";
constexpr const char* kAcpiFolder = "/sys/bus/acpi/devices/";

// A bit of what ACPI tells of a device's state (ACPI 6.5, section 6.3.7).
constexpr std::uint64_t kPresent = 1;

// Without a state a device is there.
bool isPresent(const FileTree& files, const std::string& folder) {
  return (wholeNumber(files.line(folder + "/status")).value_or(kPresent) & kPresent) != 0;
}

// The IDs in "acpi:LEN0071:PNP0303:".
std::vector<std::string> idsIn(std::string_view modalias) {
  std::vector<std::string> ids;
  if (!modalias.starts_with("acpi:")) {
    return ids;
  }
  for (std::size_t at = modalias.find(':') + 1; at < modalias.size();) {
    const std::size_t end = std::min(modalias.find(':', at), modalias.size());
    ids.emplace_back(modalias.substr(at, end - at));
    at = end + 1;
  }
  return ids;
}

}  // namespace

bool PnpDevice::has(std::string_view id) const {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

std::vector<PnpDevice> pnpDevices(const FileTree& files) {
  std::vector<PnpDevice> devices;
  for (const std::string& address : files.names(kPnpFolder)) {
    const std::string folder = kPnpFolder + address;
    PnpDevice device;
    device.address = address;
    const std::string ids = files.text(folder + "/id");
    LineReader lines(ids);
    for (std::string_view id; lines.next(id);) {
      device.ids.emplace_back(trimmed(id));
    }
    // "state = disabled", or "state = active" and the lines of what the device takes.
    device.disabled = files.line(folder + "/resources") == "state = disabled";
    device.driver = driverIn(files, folder);
    device.inAcpi = !files.linkTarget(folder + "/firmware_node").empty();
    devices.push_back(std::move(device));
  }
  return devices;
}

std::vector<PnpDevice> acpiDevices(const FileTree& files) {
  std::vector<PnpDevice> devices;
  for (const std::string& address : files.names(kAcpiFolder)) {
    // "device:1f" and the like have no ID; they only are where other buses have devices.
    if (address.starts_with("device:")) {
      continue;
    }
    const std::string folder = kAcpiFolder + address;
    PnpDevice device;
    device.address = address;
    device.ids = idsIn(files.line(folder + "/modalias"));
    if (device.ids.empty() || !isPresent(files, folder)) {
      continue;
    }
    device.description = printable(files.line(folder + "/description"));
    device.inAcpi = true;
    devices.push_back(std::move(device));
  }
  return devices;
}

}  // namespace veltrin
