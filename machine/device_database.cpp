// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/device_database.h"

#include "machine/hardware_database.h"

namespace veltrin {
namespace {

MappedFile mapDatabase(const FileTree& files) {
  // In the order in which udev itself looks for it.
  for (const char* path :
       {"/etc/systemd/hwdb/hwdb.bin", "/etc/udev/hwdb.bin", "/usr/lib/systemd/hwdb/hwdb.bin",
        "/usr/lib/udev/hwdb.bin", "/lib/udev/hwdb.bin"}) {
    MappedFile file = files.map(path);
    if (!file.bytes().empty()) {
      return file;
    }
  }
  return {};
}

}  // namespace

DeviceDatabase::DeviceDatabase(const FileTree& files) : map_(mapDatabase(files)) {}

std::map<std::string, std::string> DeviceDatabase::properties(const std::string& modalias) const {
  return modalias.empty() ? std::map<std::string, std::string>()
                          : HardwareDatabase(map_.bytes()).properties(modalias);
}

}  // namespace veltrin
