// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of devices in the hardware database of udev (hwdb(7)).
#pragma once

#include <map>
#include <string>

#include "machine/file_tree.h"

namespace veltrin {

// The compiled database of a system. It is mapped into memory, and no more of it is read than
// a search needs; without one, nothing is known.
//
// Our own reader stands behind it, as the library of udev finds the database of the running
// system only.
class DeviceDatabase {
 public:
  explicit DeviceDatabase(const FileTree& files);

  // What is known of the device with this ID on its bus ("pci:v00008086d..."), by the names of
  // the properties.
  std::map<std::string, std::string> properties(const std::string& modalias) const;

 private:
  MappedFile map_;
};

}  // namespace veltrin
