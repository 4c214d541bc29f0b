#include "platform/linux/device_database.h"

#include <libudev.h>
#include <memory>
#include <string_view>

namespace veltrin {

std::string deviceInDatabase(const std::string& modalias) {
  const std::unique_ptr<udev, decltype(&udev_unref)> library(udev_new(), udev_unref);
  if (!library) return "";
  const std::unique_ptr<udev_hwdb, decltype(&udev_hwdb_unref)> database(
      udev_hwdb_new(library.get()), udev_hwdb_unref);
  if (!database) return "";
  std::string maker;
  std::string model;
  for (udev_list_entry* entry =
           udev_hwdb_get_properties_list_entry(database.get(), modalias.c_str(), 0);
       entry != nullptr; entry = udev_list_entry_get_next(entry)) {
    const char* const value = udev_list_entry_get_value(entry);
    if (value == nullptr) continue;
    const std::string_view name = udev_list_entry_get_name(entry);
    if (name == "ID_VENDOR_FROM_DATABASE") maker = value;
    if (name == "ID_MODEL_FROM_DATABASE") model = value;
  }
  return maker.empty() || model.empty() ? model : maker + " " + model;
}

}  // namespace veltrin
