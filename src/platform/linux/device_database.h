// Names of devices in the hardware database of udev (hwdb(7)).
#pragma once

#include <string>

namespace veltrin {

// Maker and model of the device with this ID on its bus ("pci:v00008086d..."), as "Intel
// Corporation Ethernet Connection I217-LM"; empty when the model is not known, or the
// system has no such database.
std::string deviceInDatabase(const std::string& modalias);

}  // namespace veltrin
