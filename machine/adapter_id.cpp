// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/adapter_id.h"

namespace veltrin {

std::string adapterId(const FileTree& files, const std::string& interface) {
  const std::string folder = "/sys/class/net/" + interface + "/device";
  std::string id = files.line(folder + "/modalias");
  return id.starts_with("virtio:") ? files.line(folder + "/../modalias") : id;
}

}  // namespace veltrin
