// SPDX-License-Identifier: GPL-3.0-or-later
// What the system tells every program about its surroundings.
#pragma once

#include <string>

namespace veltrin {

class Environment {
 public:
  virtual ~Environment() = default;

  // The value of an environment variable; empty when there is none.
  virtual std::string variable(const std::string& name) const = 0;

  // The folder of the system's own programs, without a separator at the end; empty on
  // a system that has no such folder.
  virtual std::string systemFolder() const = 0;
};

}  // namespace veltrin
