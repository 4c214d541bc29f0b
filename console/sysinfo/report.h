// SPDX-License-Identifier: GPL-3.0-or-later
// The lines that systeminfo prints.
#pragma once

#include <string>
#include <vector>

#include "console/sysinfo/system_facts.h"

namespace veltrin {

// Without line breaks, the empty line at the top included. A label takes 27
// characters; what continues it is indented by 27, and the details of a network card
// by 33. What is not known is "N/A".
std::vector<std::string> reportLines(const SystemFacts& facts);

}  // namespace veltrin
