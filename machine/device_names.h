// SPDX-License-Identifier: GPL-3.0-or-later
// What devices are called.
#pragma once

#include <map>
#include <string>

#include "machine/device_database.h"
#include "machine/file_tree.h"
#include "machine/pci_devices.h"
#include "machine/usb_devices.h"

namespace veltrin {

// Names devices by the hardware database, else by what they tell of themselves, else by their
// maker and what they are for ("Intel Corporation SATA controller"); the name of one of which
// nothing of that is known is empty. An ID is looked up once.
class DeviceNames {
 public:
  explicit DeviceNames(const FileTree& files) : files_(files), database_(files) {}

  std::string nameOf(const PciDevice& device) { return pciNameOf(device.modalias); }
  std::string nameOf(const UsbDevice& device);

  // Of the PCI device with this ID.
  std::string pciNameOf(const std::string& modalias);

  // By the database alone: maker and model; empty when it does not know the model.
  std::string modelOf(const std::string& modalias);
  std::string makerOf(const std::string& modalias);
  std::string modelAloneOf(const std::string& modalias);

  // Whether the database tells of the device that programs can scan with it.
  bool isScanner(const UsbDevice& device);

 private:
  using Properties = std::map<std::string, std::string>;

  const Properties& propertiesOf(const std::string& modalias);
  std::string property(const std::string& modalias, const char* name);

  FileTree files_;
  DeviceDatabase database_;
  std::map<std::string, Properties> known_;
};

}  // namespace veltrin
