// The surroundings of a program on Linux.
#pragma once

#include <string>

#include "platform/environment.h"

namespace veltrin {

class LinuxEnvironment : public Environment {
 public:
  // Names are compared with their case.
  std::string variable(const std::string& name) const override;

  // Always empty: programs are found in PATH.
  std::string systemFolder() const override { return {}; }
};

}  // namespace veltrin
