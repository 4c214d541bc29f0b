// SPDX-License-Identifier: GPL-3.0-or-later
// The memory of a machine and what it is swapped out to.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

// In MB of 1024 kB, rounded down; nothing where the kernel does not tell it.
// Virtual memory is main memory and swap space together.
struct MemoryFacts {
  std::optional<std::uint64_t> total;
  std::optional<std::uint64_t> available;
  std::optional<std::uint64_t> virtualTotal;
  std::optional<std::uint64_t> virtualAvailable;
};

MemoryFacts memoryFacts(const FileTree& files);

// The files and devices that are swapped out to, in the kernel's order.
std::vector<std::string> swapPlaces(const FileTree& files);

}  // namespace veltrin
