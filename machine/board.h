// SPDX-License-Identifier: GPL-3.0-or-later
// The main board of a computer.
#pragma once

#include <string>

#include "machine/file_tree.h"

namespace veltrin {

// Empty where nothing is told.
struct BoardFacts {
  std::string manufacturer;
  std::string product;
  std::string version;
  std::string serial;  // root's on most systems

  bool operator==(const BoardFacts&) const = default;
};

// From the kernel's list of SMBIOS texts, then the table itself where this user may read it: its
// first structure Baseboard Information (DSP0134 section 7.3).
BoardFacts boardFacts(const FileTree& files);

}  // namespace veltrin
