// SPDX-License-Identifier: GPL-3.0-or-later
// What a ping is told on its command line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "console/destination_options.h"

namespace veltrin {

// The source comes by -S, the version of IP by -4 and -6.
struct PingSettings : DestinationSettings {
  bool untilStopped = false;     // -t: goes on until the user ends it
  bool resolveNames = false;     // -a: names the address
  std::uint64_t count = 4;       // -n: echoes, 1 to 4294967295
  std::size_t size = 32;         // -l: data bytes, 0 to 65500
  bool dontFragment = false;     // -f
  int ttl = 0;                   // -i: 1 to 255; 0 leaves it to the system
  int tos = 0;                   // -v: 0 to 255
  int routeSlots = 0;            // -r: hops to record, 0 to 9
  int stampSlots = 0;            // -s: hops to stamp, 0 to 4
  std::uint64_t timeout = 4000;  // -w: milliseconds to wait for a reply
};

// The outcome of reading a command line.
struct PingCommand {
  PingSettings settings;
  // The sentence to print in place of a run; empty when there is none.
  std::string problem;
  // Whether to print the usage, behind the sentence when there is one.
  bool usage = false;
};

// Reads the arguments, without the program's name. Letters may be of either
// case, save R and S, whose two cases mean two options.
PingCommand readPingCommand(const std::vector<std::string>& arguments);

// The lines that "-?" prints, first the empty one.
std::string_view pingUsage();

}  // namespace veltrin
