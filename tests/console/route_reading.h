// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the text of a trace as the windows do, and more strictly.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace veltrin {

// What is wrong with the text of a whole trace to a host without a name; empty
// for a sound one.
std::string faultOfTrace(const std::string& text);

// The hops of a trace as its readers take them: a silent hop counts as "*".
std::vector<std::string> hopsOfTrace(const std::string& text);

}  // namespace veltrin
