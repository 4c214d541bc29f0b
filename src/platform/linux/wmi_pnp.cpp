// SPDX-License-Identifier: GPL-3.0-or-later
// All devices of the buses of a machine, with the classes of Windows.
#include <array>
#include <cstdio>

#include "machine/device_names.h"
#include "machine/fact_text.h"
#include "machine/pci_devices.h"
#include "machine/pnp_devices.h"
#include "machine/sound_cards.h"
#include "machine/usb_devices.h"
#include "platform/linux/setup_classes.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

WmiObject deviceOf(const std::string& description, std::string_view setupClass) {
  return {{
      {"Description", orNull(description)},
      {"DeviceClass", orNull(std::string(setupClass))},
  }};
}

// Description: the hardware database by "uevent" of the device's folder. DeviceClass: the class
// code in it.
void addPciDevices(const FileTree& files, DeviceNames& names, WmiAnswer& answer) {
  for (const PciDevice& device : pciDevices(files)) {
    answer.push_back(
        deviceOf(names.nameOf(device), setupClassOfPci(device.kind(), device.subclass())));
  }
}

// The number of a type of virtual device, from "virtio:d00000001v00001AF4".
std::optional<std::uint32_t> virtioTypeIn(std::string_view modalias) {
  constexpr std::string_view kStart = "virtio:d";
  const auto type = modalias.starts_with(kStart)
                        ? wholeNumber(modalias.substr(kStart.size(), 8), 16)
                        : std::nullopt;
  return type ? std::optional(static_cast<std::uint32_t>(*type)) : std::nullopt;
}

// On PCI a type has this number and its own for its device's (Virtual I/O Device 1.3, section
// 4.1.2), by which the database knows it.
constexpr std::uint32_t kVirtioOnPci = 0x1040;

// Virtual devices that are on no PCI bus; the others are PCI devices themselves.
// Description: the hardware database. DeviceClass: the type. Both by "modalias".
void addVirtioDevices(const FileTree& files, DeviceNames& names, WmiAnswer& answer) {
  constexpr const char* kFolder = "/sys/bus/virtio/devices/";
  for (const std::string& entry : files.names(kFolder)) {
    const std::string folder = kFolder + entry;
    const auto type = virtioTypeIn(files.line(folder + "/modalias"));
    if (!type || files.line(folder + "/../modalias").starts_with("pci:")) {
      continue;
    }
    std::array<char, 32> onPci{};
    std::snprintf(onPci.data(), onPci.size(), "pci:v00001AF4d%08X", kVirtioOnPci + *type);
    answer.push_back(deviceOf(names.modelOf(onPci.data()), setupClassOfVirtio(*type)));
  }
}

// What an interface with a code of its maker's own is for can be seen by what its driver makes
// of it: a network interface or a serial line.
std::string_view setupClassByDriver(const FileTree& files, const UsbInterface& interface) {
  for (const std::string& name : files.names(interface.folder)) {
    if (name == "net") {
      return "NET";
    }
    if (name.starts_with("ttyUSB")) {
      return "PORTS";
    }
  }
  return {};
}

constexpr std::uint8_t kUsbOfMaker = 0xFF;

// By the first code that tells it, the device's own or an interface's.
std::string_view setupClassOf(const FileTree& files, const UsbDevice& device) {
  std::string_view found = setupClassOfUsb(device.code);
  for (auto each = device.interfaces.begin(); found.empty() && each != device.interfaces.end();
       ++each) {
    found = each->code.kind == kUsbOfMaker ? setupClassByDriver(files, *each)
                                           : setupClassOfUsb(each->code);
  }
  return found;
}

// Description: the hardware database by "uevent" of the device's folder, or the device's own
// "manufacturer" and "product". DeviceClass: the codes in "uevent" of the device and of its
// interfaces; a scanner has none, so the database tells it.
void addUsbDevices(const FileTree& files, DeviceNames& names, WmiAnswer& answer) {
  for (const UsbDevice& device : usbDevices(files)) {
    answer.push_back(deviceOf(names.nameOf(device),
                              names.isScanner(device) ? "IMAGE" : setupClassOf(files, device)));
  }
}

// Description: by the ID, else "description" of the device's folder. A device that has neither
// is only a place in the firmware's tables.
void addFirmwareDevices(const std::vector<PnpDevice>& devices, WmiAnswer& answer) {
  for (const PnpDevice& device : devices) {
    if (const KnownDevice* known = knownPnpDevice(device)) {
      answer.push_back(deviceOf(std::string(known->description), known->setupClass));
    } else if (!device.description.empty()) {
      answer.push_back(deviceOf(device.description, {}));
    }
  }
}

// What Plug and Play alone knows: on most machines nothing, as ACPI knows all of it.
std::vector<PnpDevice> devicesBesideAcpi(const FileTree& files) {
  std::vector<PnpDevice> devices = pnpDevices(files);
  std::erase_if(devices, [](const PnpDevice& device) { return device.inAcpi; });
  return devices;
}

// Description, DeviceClass: by "type" of the device's folder. Model names stand in the report's
// section of drives.
void addDrives(const FileTree& files, WmiAnswer& answer) {
  constexpr const char* kScsiFolder = "/sys/bus/scsi/devices/";
  for (const std::string& entry : files.names(kScsiFolder)) {
    // Hosts and targets have no type.
    const auto type = wholeNumber(files.line(kScsiFolder + entry + "/type"));
    const KnownDevice* known = type ? knownScsiDevice(*type) : nullptr;
    if (known != nullptr) {
      answer.push_back(deviceOf(std::string(known->description), known->setupClass));
    }
  }
}

// Description: "vendor_name" and "chip_name" of the converter.
void addSoundCodecs(const FileTree& files, WmiAnswer& answer) {
  for (const std::string& codec : soundCodecs(files)) {
    answer.push_back(deviceOf(codec, "MEDIA"));
  }
}

}  // namespace

WmiAnswer win32PnpSignedDriver(const WmiSources& sources) {
  WmiAnswer answer;
  DeviceNames names(sources.files);
  addPciDevices(sources.files, names, answer);
  addVirtioDevices(sources.files, names, answer);
  addUsbDevices(sources.files, names, answer);
  addFirmwareDevices(acpiDevices(sources.files), answer);
  addFirmwareDevices(devicesBesideAcpi(sources.files), answer);
  addDrives(sources.files, answer);
  addSoundCodecs(sources.files, answer);
  return answer;
}

}  // namespace veltrin
