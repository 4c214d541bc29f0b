// SPDX-License-Identifier: GPL-3.0-or-later
// The devices of the PCI buses of a machine.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

// The numbers are those of its configuration space (PCI Local Bus 3.0, section 6.1).
struct PciDevice {
  std::string address;  // "0000:00:1f.2": domain, bus, device and function
  std::uint16_t vendor = 0;
  std::uint16_t device = 0;
  std::uint16_t subVendor = 0;  // 0 where the device has none
  std::uint16_t subDevice = 0;
  std::uint32_t code = 0;  // class, subclass, interface: 010601h
  std::string revision;    // two hexadecimal digits; empty when it is not told
  std::string modalias;    // what the hardware database knows it by
  std::string driver;      // empty when none is bound
  std::string powerState;  // "D0", "D3hot"; empty when it is not told

  std::uint8_t kind() const { return static_cast<std::uint8_t>(code >> 16); }
  std::uint8_t subclass() const { return static_cast<std::uint8_t>(code >> 8); }
};

// In the order of their addresses. A device that does not tell its numbers is left out.
std::vector<PciDevice> pciDevices(const FileTree& files);

// Its name among the devices of Windows:
// "PCI\VEN_8086&DEV_A352&SUBSYS_000117AA&REV_10\0000:00:17.0". What stands behind the last
// backslash tells devices of one kind apart; here it is the address.
std::string deviceIdOf(const PciDevice& device);

}  // namespace veltrin
