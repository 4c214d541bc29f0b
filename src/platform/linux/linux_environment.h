// SPDX-License-Identifier: GPL-3.0-or-later
// The surroundings of a program on Linux.
#pragma once

#include <string>

#include "platform/environment.h"

namespace veltrin {

class LinuxEnvironment : public Environment {
 public:
  // Names are compared with their case. Two that Windows sets for every program, and people
  // here may not, are told all the same: NUMBER_OF_PROCESSORS, how many are online, and
  // Computername, the host's name as Windows would write it, in upper case.
  std::string variable(const std::string& name) const override;

  // Always empty: programs are found in PATH.
  std::string systemFolder() const override { return {}; }
};

}  // namespace veltrin
