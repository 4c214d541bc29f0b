// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a file of Xfce's settings: every value has a path and comes out of the bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "machine/xfconf.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  for (const auto& [path, value] : veltrin::xfconfValues(bytes)) {
    if (!path.starts_with('/') || path.size() > size || value.empty() || value.size() > size) {
      std::abort();
    }
  }
  return 0;
}
