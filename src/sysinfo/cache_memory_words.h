// SPDX-License-Identifier: GPL-3.0-or-later
// The words for the codes of Win32_CacheMemory. They stand behind the number.
#pragma once

#include "sysinfo/device_word.h"

namespace veltrin {

// Location: where the cache is.
inline constexpr DeviceWord kCacheLocations[] = {
    {0, " (internal)"},
    {1, " (external)"},
    {2, " (reserved)"},
    {3, " (unknown)"},
};

// Level.
inline constexpr DeviceWord kCacheLevels[] = {
    {1, " (other)"}, {2, " (unknown)"}, {3, " (primary)"}, {4, " (secondary)"}, {5, " (tertiary)"},
};

}  // namespace veltrin
