// SPDX-License-Identifier: GPL-3.0-or-later
// What a monitor tells of itself: EDID, the identification data that lies in its memory.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veltrin {

// Pictures in a second that a monitor can show.
struct RefreshRange {
  std::uint32_t least = 0;
  std::uint32_t most = 0;
  friend bool operator==(const RefreshRange&, const RefreshRange&) = default;
};

struct EdidFacts {
  std::string maker;          // three capital letters; empty when they are none
  std::uint16_t product = 0;  // the maker's own number of the model
  std::string name;           // of the model; empty when it is not told
  std::optional<RefreshRange> refresh;
};

// Reads the base block (VESA E-EDID, release A2, section 3); what follows it is not looked at.
// Nothing when the block is cut off or damaged, or of another version than 1.
std::optional<EdidFacts> readEdid(std::string_view bytes);

}  // namespace veltrin
