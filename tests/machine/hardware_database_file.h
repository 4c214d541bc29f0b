// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the bytes of a hardware database for tests.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace veltrin {

// A property of the devices that fit a pattern. `name` is as the file holds it: with
// a blank in front, unless it is none of udev's.
struct DatabaseEntry {
  std::string pattern;
  std::string name;
  std::string value;
  std::uint32_t line = 0;
  std::uint16_t rank = 0;
};

// The file of these entries, whose patterns share what they begin with. Without
// ranks it is one of the older form.
std::string databaseFile(const std::vector<DatabaseEntry>& entries, bool ranks = true);

}  // namespace veltrin
