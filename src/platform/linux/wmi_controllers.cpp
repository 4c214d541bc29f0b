// SPDX-License-Identifier: GPL-3.0-or-later
// The controllers of hard disks and floppy disks, from the PCI buses and from Plug and Play.
#include "machine/device_names.h"
#include "machine/fact_text.h"
#include "machine/pci_devices.h"
#include "machine/pnp_devices.h"
#include "platform/linux/setup_classes.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

// ConfigManagerErrorCode.
enum Error : int { kWorks = 0, kDisabled = 22, kNoDriver = 28 };

// ProtocolSupported: what the controller speaks with its disks.
enum Protocol : int { kOther = 1, kAta = 6, kFlexibleDiskette = 7, kIde = 37 };

struct Controller {
  std::string name;
  std::string id;
  Error error = kNoDriver;
  std::optional<int> availability;
  std::optional<int> protocol;
};

// Caption, Name: the hardware database, by the file "uevent" of the device's folder.
// PNPDeviceID: its numbers, from the same file, and its address.
// ConfigManagerErrorCode: the driver in the same file, of Plug and Play the state in "resources".
// Availability: "power_state" of a PCI device.
// ProtocolSupported: the PCI class, or the ID of Plug and Play.
// Status: by the error. PowerManagementCapabilities: no file tells them.
WmiObject objectOf(const Controller& controller) {
  return {{
      {"Caption", orNull(controller.name)},
      {"Name", orNull(controller.name)},
      {"Availability", orNull(controller.availability)},
      {"ConfigManagerErrorCode", static_cast<int>(controller.error)},
      {"PNPDeviceID", orNull(controller.id)},
      {"PowerManagementCapabilities", WmiValue()},
      {"ProtocolSupported", orNull(controller.protocol)},
      {"Status", std::string(controller.error == kWorks ? "OK" : "Error")},
  }};
}

// The classes of PCI whose devices control hard disks without SCSI.
std::optional<int> diskProtocolOf(const PciDevice& device) {
  if (device.kind() != 0x01) {
    return std::nullopt;
  }
  switch (device.subclass()) {
    case 0x01:
      return kIde;
    case 0x05:  // ATA
    case 0x06:  // SATA, which is ATA over another wire
      return kAta;
    case 0x08:  // NVMe has no number of its own
      return kOther;
    default:
      return std::nullopt;
  }
}

bool controlsFloppies(const PciDevice& device) {
  return device.kind() == 0x01 && device.subclass() == 0x02;
}

// Availability of a device that its driver runs: 3 with full power; 15, standby, while it
// saves power and does nothing until it is needed; 7 without any. Of a device without a driver
// nobody can tell.
std::optional<int> availabilityOf(const PciDevice& device) {
  const std::string& state = device.powerState;
  if (device.driver.empty()) {
    return std::nullopt;
  }
  if (state == "D0") {
    return 3;
  }
  if (state == "D1" || state == "D2" || state == "D3hot") {
    return 15;
  }
  return state == "D3cold" ? std::optional(7) : std::nullopt;
}

// The file "enable" is of no use here: it is 0 while some drivers save power, too.
Controller controllerOf(const PciDevice& device, int protocol, DeviceNames& names) {
  return {names.nameOf(device), deviceIdOf(device), device.driver.empty() ? kNoDriver : kWorks,
          availabilityOf(device), protocol};
}

Controller controllerOf(const PnpDevice& device, const char* id, int protocol, bool works) {
  const KnownDevice* known = knownPnpDevice(device);
  return {known == nullptr ? "" : std::string(known->description),
          "ACPI\\" + std::string(id) + "\\" + printable(device.address),
          device.disabled ? kDisabled : (works ? kWorks : kNoDriver), std::nullopt, protocol};
}

// The driver of floppy disks is not bound to the controller; it makes devices of its own,
// "floppy.0", for what it has found.
bool floppyDriverRuns(const FileTree& files) {
  for (const std::string& name : files.names("/sys/bus/platform/drivers/floppy")) {
    if (name.starts_with("floppy.")) {
      return true;
    }
  }
  return false;
}

constexpr const char* kPnpIdeController = "PNP0600";
constexpr const char* kPnpFloppyController = "PNP0700";

}  // namespace

WmiAnswer win32IdeController(const WmiSources& sources) {
  WmiAnswer answer;
  DeviceNames names(sources.files);
  for (const PciDevice& device : pciDevices(sources.files)) {
    if (const auto protocol = diskProtocolOf(device)) {
      answer.push_back(objectOf(controllerOf(device, *protocol, names)));
    }
  }
  for (const PnpDevice& device : pnpDevices(sources.files)) {
    if (device.has(kPnpIdeController)) {
      answer.push_back(
          objectOf(controllerOf(device, kPnpIdeController, kIde, !device.driver.empty())));
    }
  }
  return answer;
}

WmiAnswer win32FloppyController(const WmiSources& sources) {
  WmiAnswer answer;
  DeviceNames names(sources.files);
  for (const PciDevice& device : pciDevices(sources.files)) {
    if (controlsFloppies(device)) {
      answer.push_back(objectOf(controllerOf(device, kFlexibleDiskette, names)));
    }
  }
  for (const PnpDevice& device : pnpDevices(sources.files)) {
    if (device.has(kPnpFloppyController)) {
      answer.push_back(objectOf(controllerOf(device, kPnpFloppyController, kFlexibleDiskette,
                                             floppyDriverRuns(sources.files))));
    }
  }
  return answer;
}

}  // namespace veltrin
