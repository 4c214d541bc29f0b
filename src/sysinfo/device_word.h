// SPDX-License-Identifier: GPL-3.0-or-later
// A code of a device and the word by which the report tells it.
#pragma once

#include <cstdint>
#include <string_view>

namespace veltrin {

struct DeviceWord {
  std::int32_t code;
  std::string_view text;
};

}  // namespace veltrin
