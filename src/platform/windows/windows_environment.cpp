// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/windows_environment.h"

#include <windows.h>

#include "platform/windows/code_page.h"

namespace veltrin {

// The value may grow between the two calls: a buffer that has become too small is made
// anew with the size that is then needed.
std::string WindowsEnvironment::variable(const std::string& name) const {
  const std::string ansiName = toAnsi(name);
  std::string value;
  DWORD size = GetEnvironmentVariableA(ansiName.c_str(), nullptr, 0);
  while (size > value.size()) {
    value.resize(size);
    size = GetEnvironmentVariableA(ansiName.c_str(), value.data(), size);
  }
  value.resize(size);
  return fromAnsi(value);
}

std::string WindowsEnvironment::systemFolder() const {
  std::string folder(MAX_PATH, '\0');
  folder.resize(GetSystemDirectoryA(folder.data(), MAX_PATH));
  return fromAnsi(folder);
}

}  // namespace veltrin
