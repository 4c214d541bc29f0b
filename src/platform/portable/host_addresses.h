// SPDX-License-Identifier: GPL-3.0-or-later
// The addresses that belong to a name.
#pragma once

#include <string>
#include <vector>

namespace veltrin {

// Asks the system for the addresses of a host, in the order in which it would try them
// (RFC 6724), each in numbers, IPv6 with its zone where it has one. Empty when there are
// none. Waits for as long as the system takes, and may be called from any thread.
std::vector<std::string> addressesOf(const std::string& host);

}  // namespace veltrin
