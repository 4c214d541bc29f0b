// SPDX-License-Identifier: GPL-3.0-or-later
// Moments and time zones as systeminfo prints them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

// A moment in seconds since 1970 as "1/30/2026, 3:22:51 PM", in the zone of this
// process.
std::string momentText(const Machine& machine, std::int64_t seconds);

// The zone of this process with its present distance from UTC, "(UTC+02:00)
// Europe/Berlin"; UTC itself is "(UTC) Coordinated Universal Time". A zone without
// a name goes by its abbreviation.
std::string timeZoneText(const FileTree& files, const Machine& machine);

// The moment that a line starts with, "[2024-05-01T12:00:00+0200]", in seconds since
// 1970; nothing when it starts with anything else.
std::optional<std::int64_t> momentInLog(std::string_view line);

}  // namespace veltrin
