// SPDX-License-Identifier: GPL-3.0-or-later
// What the text of the console tool `ping` tells of its one echo.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/icmp.h"

namespace veltrin {

struct PingOutcome {
  std::uint32_t status = kIpSuccess;  // an IP_STATUS number
  std::uint32_t address = 0;          // of whoever replied, as it lies in memory; 0: nobody
  std::uint32_t milliseconds = 0;     // of a reply's round trip, 0 below one
  std::uint8_t ttl = 0;               // of a reply; 0 when it is not told

  bool operator==(const PingOutcome&) const = default;
};

// The outcome in the first whole line that tells one; nothing as long as none does. Takes
// any text whatever.
std::optional<PingOutcome> readPingOutcome(std::string_view text);

}  // namespace veltrin
