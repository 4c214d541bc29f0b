// SPDX-License-Identifier: GPL-3.0-or-later
// The values that stand behind the keys of a scenario file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lab/scenario.h"

namespace veltrin::lab {

// Each reads one value; a text that is none of its kind throws
// std::invalid_argument with a sentence that says what is expected and what
// stands there.

// The longest delay, and the latest moment, that a scenario can name.
inline constexpr std::chrono::seconds kLongestDelay{60};
inline constexpr std::chrono::seconds kLatestMoment{86400};

// "2 ms", "250 us", "1.5 s": 0 to `longest`.
Time readDuration(std::string_view text, std::chrono::seconds longest = kLongestDelay);

// "20 %" or "0.5 %" as a fraction: 0 to 1.
double readPercentage(std::string_view text);

// "every 5th", from "every 1st" on; or "13 of 100", from "0 of 1" on.
Pattern readPattern(std::string_view text);

// Answers that a pattern picks, and how much later they come.
struct DelayedPattern {
  Pattern pattern;
  Time delay{};
};

// "every 5th by 300 ms".
DelayedPattern readDelayedPattern(std::string_view text);

// "yes" or "no".
bool readYesNo(std::string_view text);

// Digits alone, within the limits.
std::uint64_t readNumber(std::string_view text, std::uint64_t least, std::uint64_t most);

// "192.0.2.1, 2001:db8::1": one or more.
std::vector<IpAddress> readAddresses(std::string_view text);

// "192.0.2.2/24, 2001:db8::2/64": one or more.
std::vector<MachineAddress> readMachineAddresses(std::string_view text);

// The parts between separators, without blanks around them; parts may be empty.
std::vector<std::string> splitList(std::string_view text, char separator = ',');

// A name as the DNS allows it: labels of 1 to 63 letters, digits and hyphens,
// up to 253 characters (RFC 1035 section 2.3.1, RFC 1123 section 2.1).
void checkName(std::string_view text);

}  // namespace veltrin::lab
