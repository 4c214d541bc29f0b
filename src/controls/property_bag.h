// SPDX-License-Identifier: GPL-3.0-or-later
// Where a container keeps the properties of a control.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "controls/device_context.h"

namespace veltrin {

// Values by name, in the order in which they were first written. A colour is a number of
// 32 bits without a sign, a length one of double precision.
class PropertyBag {
 public:
  using Value = std::variant<bool, std::int16_t, std::int32_t, std::uint32_t, float, double,
                             DeviceFont, DevicePicture>;

  void WriteProperty(const std::string& name, Value value) {
    for (auto& [known, old] : values_) {
      if (known != name) continue;
      old = std::move(value);
      return;
    }
    values_.emplace_back(name, std::move(value));
  }

  // None when there is no value of that name, or one of another kind.
  template <class Kind>
  std::optional<Kind> ReadProperty(std::string_view name) const {
    for (const auto& [known, value] : values_) {
      if (known != name) continue;
      const Kind* found = std::get_if<Kind>(&value);
      return found == nullptr ? std::nullopt : std::optional<Kind>(*found);
    }
    return std::nullopt;
  }

  const std::vector<std::pair<std::string, Value>>& values() const { return values_; }

 private:
  std::vector<std::pair<std::string, Value>> values_;
};

}  // namespace veltrin
