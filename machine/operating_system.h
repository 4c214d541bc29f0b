// SPDX-License-Identifier: GPL-3.0-or-later
// What names and dates the operating system.
#pragma once

#include <string>

#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

// Empty where nothing is known for sure.
struct OperatingSystemFacts {
  std::string name;           // of the distribution with its version
  std::string version;        // of the kernel
  std::string manufacturer;   // of the distribution
  std::string configuration;  // the edition of the distribution
  std::string buildType;      // for one processor or several
  std::string installed;      // the day and time
  std::string booted;         // the day and time
  std::string computerType;   // "x64-based PC"
};

OperatingSystemFacts operatingSystemFacts(const FileTree& files, const Machine& machine);

// The kind of computer by the kernel's word for its processors: "x64-based PC" for "x86_64".
// Empty where the kernel tells none.
std::string computerType(const std::string& machine);

}  // namespace veltrin
