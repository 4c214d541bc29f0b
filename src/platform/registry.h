// SPDX-License-Identifier: GPL-3.0-or-later
// The registry: named values of two types under keys below a hive.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace veltrin {

inline constexpr std::uint32_t kHkeyCurrentUser = 0x80000001;
inline constexpr std::uint32_t kHkeyLocalMachine = 0x80000002;

// Below kHkeyLocalMachine: the settings of the network interfaces.
inline constexpr const char* kInterfacesKey =
    "SYSTEM\\CurrentControlSet\\Services\\Tcpip\\Parameters\\Interfaces";

// Types of registry values, by their numbers in the system.
inline constexpr std::uint32_t kRegSz = 1;
inline constexpr std::uint32_t kRegDword = 4;

// Access that the program asks for when it opens a key: all rights on values
// and subkeys but the standard ones.
inline constexpr std::uint32_t kKeyAccess = 63;

// The four registry calls that the program uses, with results as the system
// gives them: 0 for success, else the system's error number.
class Registry {
 public:
  using Key = std::uintptr_t;

  virtual ~Registry() = default;

  // RegOpenKeyExA. `path` is separated by backslashes and compared without case.
  virtual std::int32_t open(std::uint32_t hive, const std::string& path, std::uint32_t access,
                            Key& key) = 0;

  // RegQueryValueExA. Sets `type` and `size`, the value's bytes; a text counts its
  // terminating NUL when it was stored with one. Without `data` that is all; with
  // it, `data` takes the value's bytes, at most the `size` handed in.
  virtual std::int32_t query(Key key, const std::string& name, std::uint32_t& type,
                             std::uint32_t& size, char* data) = 0;

  // RegSetValueExA with the value's bytes as they are.
  virtual std::int32_t set(Key key, const std::string& name, std::uint32_t type,
                           const std::string& data) = 0;

  // RegCloseKey.
  virtual void close(Key key) = 0;
};

}  // namespace veltrin
