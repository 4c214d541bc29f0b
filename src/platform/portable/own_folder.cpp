// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/own_folder.h"

#include <algorithm>

#include "platform/portable/final_place.h"

namespace veltrin {

bool staysBelow(const std::string& folder, const std::string& path) {
  const std::filesystem::path own = finalPlace(folder);
  const std::filesystem::path place = finalPlace(path);
  if (own.empty() || place.empty()) return false;
  return std::mismatch(own.begin(), own.end(), place.begin(), place.end()).first == own.end();
}

}  // namespace veltrin
