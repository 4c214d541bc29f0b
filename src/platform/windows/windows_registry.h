// SPDX-License-Identifier: GPL-3.0-or-later
// The registry of Windows.
#pragma once

#include "platform/registry.h"

namespace veltrin {

// RegOpenKeyExA, RegQueryValueExA, RegSetValueExA and RegCloseKey. Names and texts
// (values of type kRegSz) are UTF-8 on this side and in the ANSI code page on the
// system's, and `size` counts bytes of UTF-8. The system itself ends a text that is
// stored without a NUL with one.
class WindowsRegistry : public Registry {
 public:
  std::int32_t open(std::uint32_t hive, const std::string& path, std::uint32_t access,
                    Key& key) override;

  // The system's error, 234 when `data` is too small: `size` is then what is needed
  // and nothing is copied.
  std::int32_t query(Key key, const std::string& name, std::uint32_t& type, std::uint32_t& size,
                     char* data) override;

  std::int32_t set(Key key, const std::string& name, std::uint32_t type,
                   const std::string& data) override;

  void close(Key key) override;
};

}  // namespace veltrin
