// SPDX-License-Identifier: GPL-3.0-or-later
// What every registry has in common: error numbers and how a value is handed over.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace veltrin {

// The system's error numbers, as the registry calls return them.
inline constexpr std::int32_t kRegistrySuccess = 0;
inline constexpr std::int32_t kRegistryNotFound = 2;       // no such key or value
inline constexpr std::int32_t kRegistryAccessDenied = 5;   // right not asked for, or refused
inline constexpr std::int32_t kRegistryInvalidHandle = 6;  // no open key, no known hive
inline constexpr std::int32_t kRegistryInvalidData = 13;   // value that cannot be read
inline constexpr std::int32_t kRegistryDiskFull = 112;     // no room to store it
inline constexpr std::int32_t kRegistryBadPath = 161;      // path that starts with a backslash
inline constexpr std::int32_t kRegistryMoreData = 234;     // buffer too small
inline constexpr std::int32_t kRegistryIoFailed = 1016;    // file not readable or writable
inline constexpr std::int32_t kRegistryKeyDeleted = 1018;  // open key is gone

// Gives a value's bytes the way RegQueryValueEx does: `size` becomes their number;
// `data`, when there is one, takes them if they fit into the `size` handed in.
inline std::int32_t handOver(std::string_view value, std::uint32_t& size, char* data) {
  const std::uint32_t room = size;
  size = static_cast<std::uint32_t>(value.size());
  if (data == nullptr) return kRegistrySuccess;
  if (room < value.size()) return kRegistryMoreData;
  if (!value.empty()) std::memcpy(data, value.data(), value.size());
  return kRegistrySuccess;
}

}  // namespace veltrin
