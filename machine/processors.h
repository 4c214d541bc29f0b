// SPDX-License-Identifier: GPL-3.0-or-later
// The processors of a machine.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "machine/file_tree.h"
#include "machine/machine.h"
#include "machine/processor_fields.h"

namespace veltrin {

// One processor package, which holds several logical processors.
struct ProcessorPackage {
  std::string name;  // as its maker sells it; empty where it is not told
  ProcessorIdentity identity;
  std::vector<std::uint64_t> processors;  // numbers of the logical ones, rising

  // Bits that it computes with at once, whatever the kernel uses; nothing for a kind that is not
  // known.
  std::optional<std::uint64_t> width;

  // In MHz; nothing where they are not told. The highest that one of its cores may run at, and the
  // highest at which one does at present.
  std::optional<std::uint64_t> highest;
  std::optional<std::uint64_t> present;
};

// The packages in the order of their numbers. A processor that tells no package counts as one, and
// stands behind those that do. Empty when the kernel lists no processor.
std::vector<ProcessorPackage> processorPackages(const FileTree& files, const Kernel& kernel);

// One text for each package, "Intel64 Family 6 Model 37 Stepping 5 GenuineIntel ~2667 Mhz", in the
// same order.
//
// The frequency is the nominal one where it is told, else the highest that the
// governor allows, else the present one.
std::vector<std::string> processorFacts(const FileTree& files, const Kernel& kernel);

}  // namespace veltrin
