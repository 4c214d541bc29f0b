// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/windows_registry.h"

#include <windows.h>

#include "platform/portable/registry_value.h"
#include "platform/windows/code_page.h"

namespace veltrin {
namespace {

HKEY handleOf(Registry::Key key) {
  return reinterpret_cast<HKEY>(key);  // NOLINT(performance-no-int-to-ptr)
}

// The hives' numbers are 32-bit values that the system widens with their sign.
HKEY hiveOf(std::uint32_t hive) {
  return handleOf(
      static_cast<Registry::Key>(static_cast<std::intptr_t>(static_cast<std::int32_t>(hive))));
}

}  // namespace

std::int32_t WindowsRegistry::open(std::uint32_t hive, const std::string& path,
                                   std::uint32_t access, Key& key) {
  HKEY opened = nullptr;
  const LONG error = RegOpenKeyExA(hiveOf(hive), toAnsi(path).c_str(), 0, access, &opened);
  if (error == ERROR_SUCCESS) key = reinterpret_cast<Key>(opened);
  return error;
}

std::int32_t WindowsRegistry::query(Key key, const std::string& name, std::uint32_t& type,
                                    std::uint32_t& size, char* data) {
  const std::string ansiName = toAnsi(name);
  std::string value;
  DWORD kind = 0;
  LONG error = ERROR_MORE_DATA;
  while (error == ERROR_MORE_DATA) {  // the value may grow between the two calls
    DWORD count = 0;
    error = RegQueryValueExA(handleOf(key), ansiName.c_str(), nullptr, &kind, nullptr, &count);
    if (error != ERROR_SUCCESS) break;
    value.resize(count);
    error = RegQueryValueExA(handleOf(key), ansiName.c_str(), nullptr, &kind,
                             reinterpret_cast<BYTE*>(value.data()), &count);
    value.resize(error == ERROR_SUCCESS ? count : 0);
  }
  if (error != ERROR_SUCCESS) return error;
  type = kind;
  return handOver(kind == kRegSz ? fromAnsi(value) : value, size, data);
}

std::int32_t WindowsRegistry::set(Key key, const std::string& name, std::uint32_t type,
                                  const std::string& data) {
  const std::string value = type == kRegSz ? toAnsi(data) : data;
  return RegSetValueExA(handleOf(key), toAnsi(name).c_str(), 0, type,
                        reinterpret_cast<const BYTE*>(value.data()),
                        static_cast<DWORD>(value.size()));
}

void WindowsRegistry::close(Key key) { RegCloseKey(handleOf(key)); }

}  // namespace veltrin
