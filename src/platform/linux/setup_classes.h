// SPDX-License-Identifier: GPL-3.0-or-later
// The classes by which Windows sorts devices ("DeviceClass" of Win32_PnPSignedDriver), and the
// devices without a bus that goes by codes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "machine/pnp_devices.h"
#include "machine/usb_devices.h"

namespace veltrin {

// By the class and the subclass of a PCI device; empty for one that no class is for.
std::string_view setupClassOfPci(std::uint8_t kind, std::uint8_t subclass);

// By the code of a USB device or interface. Empty for one that no class is for.
std::string_view setupClassOfUsb(const UsbCode& code);

// By the type of a virtual device (Virtual I/O Device 1.3, section 5).
std::string_view setupClassOfVirtio(std::uint32_t type);

// A device with an ID of Plug and Play, or a kind of SCSI device.
struct KnownDevice {
  std::string_view description;
  std::string_view setupClass;
};

// By the first of the device's IDs that is known; null for another device.
const KnownDevice* knownPnpDevice(const PnpDevice& device);

// By the type of a SCSI device (SPC-5, "peripheral device type"); null for another one.
const KnownDevice* knownScsiDevice(std::uint64_t type);

}  // namespace veltrin
