// SPDX-License-Identifier: GPL-3.0-or-later
// What the endpoint says to a caller.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tools/update_endpoint/address.h"

namespace veltrin::endpoint {

// The TCP ports that the program tries, in this order.
inline constexpr std::array<std::uint16_t, 2> kUsualPorts{31112, 31113};

// Characters of a version in an answer, as in "1.03".
inline constexpr std::size_t kVersionLength = 4;

// Whether a text is a version as answers carry it: digit, point, two digits.
bool isVersion(std::string_view text);

// The whole answer: the version, and right behind it the caller's address as the
// server sees it. Nothing ends it; the program takes what comes in one arrival.
std::string answerTo(const Address& caller, std::string_view version);

}  // namespace veltrin::endpoint
