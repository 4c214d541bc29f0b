#include "platform/linux/linux_environment.h"

#include <cstdlib>

namespace veltrin {

std::string LinuxEnvironment::variable(const std::string& name) const {
  const char* value = std::getenv(name.c_str());
  return value == nullptr ? std::string() : value;
}

}  // namespace veltrin
