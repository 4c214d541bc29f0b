// SPDX-License-Identifier: GPL-3.0-or-later
// The surroundings of a program on Windows.
#pragma once

#include <string>

#include "platform/environment.h"

namespace veltrin {

// GetEnvironmentVariableA and GetSystemDirectoryA, in UTF-8 on this side.
class WindowsEnvironment : public Environment {
 public:
  // The system compares names without case.
  std::string variable(const std::string& name) const override;

  std::string systemFolder() const override;
};

}  // namespace veltrin
