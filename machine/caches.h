// SPDX-License-Identifier: GPL-3.0-or-later
// The caches of processors.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "machine/file_tree.h"
#include "machine/smbios.h"

namespace veltrin {

// The caches of one level and kind in one processor package, all of its cores together. Nothing
// where it is not told.
struct CacheFacts {
  std::optional<std::uint64_t> level;      // 1 is the nearest to the core
  std::optional<std::uint64_t> kilobytes;  // the most that it can hold, in kB of 1024 bytes
  std::optional<std::uint64_t> location;   // 0 in the package, 1 outside, 2 reserved, 3 unknown
  std::optional<bool> enabled;

  bool operator==(const CacheFacts&) const = default;
};

// Those of the structures Cache Information (section 7.8), in the order of the table.
std::vector<CacheFacts> cachesIn(const SmbiosTable& table);

// Those of a package as the kernel tells them, by its logical processors: the nearest first, and
// of one level those of data before those of instructions. The kernel does not tell the location,
// nor whether a cache is enabled.
std::vector<CacheFacts> cachesOf(const FileTree& files,
                                 const std::vector<std::uint64_t>& processors);

}  // namespace veltrin
