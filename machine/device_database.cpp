#include "machine/device_database.h"

#include "machine/fact_text.h"
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

DeviceDatabase::Names DeviceDatabase::namesOf(const std::string& modalias) const {
  const auto known = properties(modalias);
  const auto value = [&](const char* name) {
    const auto found = known.find(name);
    return found == known.end() ? std::string() : printable(found->second);
  };
  return {value("ID_VENDOR_FROM_DATABASE"), value("ID_MODEL_FROM_DATABASE")};
}

std::string DeviceDatabase::fullNameOf(const std::string& modalias) const {
  const auto [maker, model] = namesOf(modalias);
  return model.empty() || maker.empty() ? model : maker + " " + model;
}

}  // namespace veltrin
