// SPDX-License-Identifier: GPL-3.0-or-later
// Puts devices into the tree of a machine that a test makes up, as the kernel would.
#pragma once

#include <string>
#include <string_view>

#include "hardware_database_file.h"
#include "temporary_tree.h"

namespace veltrin {

// A PCI device. The texts are as the kernel writes them: a class "10601", IDs "8086:A352".
struct PciFolder {
  std::string address = "0000:00:17.0";
  std::string code = "10601";
  std::string ids = "8086:A352";
  std::string subIds = "17AA:0001";
  std::string revision = "0x10";
  std::string driver = "ahci";
  std::string power = "D0";
  std::string modalias = "pci:v00008086d0000A352sv000017AAsd00000001bc01sc06i01";
};

inline void putPci(const TemporaryTree& tree, const PciFolder& device = {}) {
  const std::string folder = "/sys/devices/pci0000:00/" + device.address;
  const std::string driver = device.driver.empty() ? "" : "DRIVER=" + device.driver + "\n";
  tree.put(folder + "/uevent", driver + "PCI_CLASS=" + device.code + "\nPCI_ID=" + device.ids +
                                   "\nPCI_SUBSYS_ID=" + device.subIds + "\nPCI_SLOT_NAME=" +
                                   device.address + "\nMODALIAS=" + device.modalias + "\n");
  tree.put(folder + "/modalias", device.modalias + "\n");
  tree.put(folder + "/revision", device.revision + "\n");
  if (!device.power.empty()) {
    tree.put(folder + "/power_state", device.power + "\n");
  }
  tree.link("/sys/bus/pci/devices/" + device.address,
            "../../../devices/pci0000:00/" + device.address);
}

// A USB device: "46d/c31c/6402" and "0/0/0", as the kernel writes them.
inline void putUsb(const TemporaryTree& tree, const std::string& address,
                   const std::string& product, const std::string& type) {
  tree.put("/sys/bus/usb/devices/" + address + "/uevent",
           "DEVTYPE=usb_device\nDRIVER=usb\nPRODUCT=" + product + "\nTYPE=" + type +
               "\nBUSNUM=001\nDEVNUM=002\n");
}

// What a USB device calls itself.
inline void putUsbTexts(const TemporaryTree& tree, const std::string& address,
                        std::string_view maker, std::string_view model) {
  tree.put("/sys/bus/usb/devices/" + address + "/manufacturer", std::string(maker) + "\n");
  tree.put("/sys/bus/usb/devices/" + address + "/product", std::string(model) + "\n");
}

inline void putUsbInterface(const TemporaryTree& tree, const std::string& name,
                            const std::string& code) {
  tree.put("/sys/bus/usb/devices/" + name + "/uevent",
           "DEVTYPE=usb_interface\nINTERFACE=" + code + "\n");
}

// A hardware database with a few devices and classes.
inline void putDeviceDatabase(const TemporaryTree& tree) {
  tree.put("/usr/lib/udev/hwdb.bin",
           databaseFile(
               {{"pci:v00008086*", " ID_VENDOR_FROM_DATABASE", "Intel Corporation"},
                {"pci:v00008086d0000A352*", " ID_MODEL_FROM_DATABASE", "SATA AHCI Controller"},
                {"pci:v*d*sv*sd*bc01*", " ID_PCI_CLASS_FROM_DATABASE", "Mass storage controller"},
                {"pci:v*d*sv*sd*bc01sc08*", " ID_PCI_SUBCLASS_FROM_DATABASE",
                 "Non-Volatile memory controller"},
                {"pci:v*d*sv*sd*bc04sc03*", " ID_PCI_SUBCLASS_FROM_DATABASE", "Audio device"},
                {"pci:v00001AF4*", " ID_VENDOR_FROM_DATABASE", "Red Hat, Inc."},
                {"pci:v00001AF4d00001041*", " ID_MODEL_FROM_DATABASE", "Virtio 1.0 network device"},
                {"usb:v1D6B*", " ID_VENDOR_FROM_DATABASE", "Linux Foundation"},
                {"usb:v1D6Bp0003*", " ID_MODEL_FROM_DATABASE", "3.0 root hub"},
                {"usb:v046D*", " ID_VENDOR_FROM_DATABASE", "Logitech, Inc."},
                {"usb:v046DpC31C*", " ID_MODEL_FROM_DATABASE", "Keyboard K120"},
                {"usb:v06CB*", " ID_VENDOR_FROM_DATABASE", "Synaptics, Inc."},
                {"usb:v04A9p190F*", " libsane_matched", "yes"},
                {"usb:v*p*d*dc09*", " ID_USB_CLASS_FROM_DATABASE", "Hub"},
                {"usb:v*p*d*dc0E*", " ID_USB_CLASS_FROM_DATABASE", "Video"},
                {"acpi:LEN*", " ID_VENDOR_FROM_DATABASE", "Lenovo Beijing Co. Ltd."},
                {"acpi:MSFT*", " ID_VENDOR_FROM_DATABASE", "Microsoft Corporation"},
                {"acpi:PNP*", " ID_VENDOR_FROM_DATABASE", "Microsoft"}}));
}

}  // namespace veltrin
