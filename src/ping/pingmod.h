// SPDX-License-Identifier: GPL-3.0-or-later
// The readings of the text that `ping` prints, and an echo without that tool.
#pragma once

#include <optional>
#include <string>

#include "frame/program.h"
#include "platform/icmp.h"
#include "text/loose.h"

namespace veltrin {

// Chain reading: looks for "Average = " anywhere in a chunk, in any case, and
// takes the text between it and "ms" as the time in milliseconds; the first line
// of a chunk counts. Leaves `PingTime` as it was when the chunk holds no average. Returns
// whether the time is 0.
bool readAverage(const std::string& chunk, Loose& PingTime);

// Tail reading: trusts that a chunk ends in a summary line, "ms" and exactly three
// more characters, and takes the digits before them. `PingTime` serves as scratch
// text and holds the last characters looked at. Returns the time as text, or
// nothing when the chunk changes nothing.
std::optional<std::string> readTail(const std::string& chunk, Loose& PingTime);

// Sends one echo of 30 bytes to a dotted IPv4 address and waits up to 200 ms for the
// reply; no event routine runs meanwhile. A text that is no such address means 0.0.0.0,
// which nobody answers. RoundTripTime of an echo without a reply is kNoReplyTime. A socket
// layer that does not work is told to the user with each echo, and the echo is tried.
void Ping(Program& program, const std::string& address, ICMP_ECHO_REPLY& reply);

}  // namespace veltrin
