// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/device_folder.h"

#include "machine/fact_text.h"

namespace veltrin {

std::string eventValue(std::string_view uevent, std::string_view key) {
  LineReader lines(uevent);
  for (std::string_view line; lines.next(line);) {
    if (line.size() > key.size() && line.starts_with(key) && line[key.size()] == '=') {
      return std::string(line.substr(key.size() + 1));
    }
  }
  return {};
}

std::string driverIn(const FileTree& files, const std::string& folder) {
  const std::string target = files.linkTarget(folder + "/driver");
  return target.substr(target.rfind('/') + 1);
}

std::string joinedWords(const std::string& left, const std::string& right) {
  return left.empty() || right.empty() ? left + right : left + " " + right;
}

}  // namespace veltrin
