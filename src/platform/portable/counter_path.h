// SPDX-License-Identifier: GPL-3.0-or-later
// Paths of performance counters.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veltrin {

// "\\machine\Object(instance)\Counter" taken apart.
struct CounterPath {
  std::optional<std::string> machine;  // none: the own one ("\Object\Counter")
  std::string object;
  std::optional<std::string> instance;  // none: no parentheses
  std::string counter;
};

// The parts of a path; nothing when it has not that form. The instance is what stands
// between the object's first parenthesis and the last, so that it may hold some itself.
std::optional<CounterPath> splitCounterPath(std::string_view path);

}  // namespace veltrin
