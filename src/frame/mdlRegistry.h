// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and writing of single registry values.
#pragma once

#include <cstdint>
#include <string>

#include "platform/registry.h"
#include "text/loose.h"

namespace veltrin {

// The value as a text or a number; nothing when the key or the value is absent or
// of another type than REG_SZ and REG_DWORD. A text keeps the terminating NUL
// that its size in the registry counts.
Loose readRegistryValue(Registry& registry, std::uint32_t hive, const std::string& path,
                        const std::string& name);

// Stores a text without a terminating NUL (type REG_SZ) or a number of 32 bits
// (REG_DWORD); other types store nothing. A missing key is not made.
void writeRegistryValue(Registry& registry, std::uint32_t hive, const std::string& path,
                        const std::string& name, const Loose& value, std::uint32_t type);

}  // namespace veltrin
