// A number that tells this installation from others.
#pragma once

#include <string>

#include "machine/file_tree.h"

namespace veltrin {

// Four groups of five characters, "3K7QD-0V9XN-A1B2C-ZZ5RT". They stay the same as
// long as the system is not installed anew, and tell nobody the machine ID from
// which they come: machine-id(5) asks programs to show no more than a keyed hash of
// it that is theirs alone. Empty when the machine has no such ID.
std::string productId(const FileTree& files);

}  // namespace veltrin
