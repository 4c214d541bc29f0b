// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_environment.h"

#include <array>
#include <cstdlib>
#include <unistd.h>

#include "text/strings.h"

namespace veltrin {
namespace {

// Without the name of its domain.
std::string hostName() {
  std::array<char, 256> name{};
  if (gethostname(name.data(), name.size() - 1) != 0) return {};
  const std::string whole = name.data();
  return UCase(whole.substr(0, whole.find('.')));
}

std::string standardValue(const std::string& name) {
  if (name == "NUMBER_OF_PROCESSORS") return std::to_string(sysconf(_SC_NPROCESSORS_ONLN));
  if (name == "Computername") return hostName();
  return {};
}

}  // namespace

std::string LinuxEnvironment::variable(const std::string& name) const {
  const char* value = std::getenv(name.c_str());
  return value == nullptr ? standardValue(name) : value;
}

}  // namespace veltrin
