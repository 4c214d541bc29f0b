// The processors of a machine.
#pragma once

#include <string>
#include <vector>

#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

// One text for each processor package, "Intel64 Family 6 Model 37 Stepping 5
// GenuineIntel ~2667 Mhz", in the order of their numbers. A processor that tells no
// package counts as one. Empty when the kernel lists no processor.
//
// The frequency is the nominal one where it is told, else the highest that the
// governor allows, else the present one.
std::vector<std::string> processorFacts(const FileTree& files, const Kernel& kernel);

}  // namespace veltrin
