// SPDX-License-Identifier: GPL-3.0-or-later
// The counters of an Internet protocol, the same for both versions.
#pragma once

#include <array>
#include <string>

#include "frame/program.h"
#include "monitor/counter_values.h"

namespace veltrin {

// In the order of the tables.
inline constexpr std::array<const char*, CounterValues::kProtocolCounters> kProtocolCounters = {
    "Datagrams/sec",
    "Datagrams Received/sec",
    "Datagrams Received Header Errors",
    "Datagrams Received Address Errors",
    "Datagrams Forwarded/sec",
    "Datagrams Received Unknown Protocol",
    "Datagrams Received Discarded",
    "Datagrams Received Delivered/sec",
    "Datagrams Sent/sec",
    "Datagrams Outbound Discarded",
    "Datagrams Outbound No Route",
    "Fragments Received/sec",
    "Fragments Re-assembled/sec",
    "Fragment Re-assembly Failures",
    "Fragmented Datagrams/sec",
    "Fragmentation Failures",
    "Fragments Created/sec"};

// Adds the counters of a protocol, "IPv4" or "IPv6", to the program's query; lets events
// run. A counter that cannot be added has the handle 0.
void addProtocolCounters(Program& program, const std::string& protocol,
                         CounterValues::ProtocolHandles& handles);

// Samples the query once and reads the counters; lets events run.
void readProtocolCounters(Program& program, const CounterValues::ProtocolHandles& handles,
                          CounterValues::ProtocolValues& values);

}  // namespace veltrin
