// SPDX-License-Identifier: GPL-3.0-or-later
// Sentences that several of the console tools print.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "console/network.h"

namespace veltrin {

// What an error answer reports, as a sentence.
std::string_view sentenceOf(IcmpError error);

// Why a tool cannot send, from how the opening of its network went; empty when it
// went well. `tool` is the tool's name as it stands before its own mistakes.
std::string openingProblem(OpenResult result, std::string_view tool,
                           const std::optional<Address>& source);

}  // namespace veltrin
