// SPDX-License-Identifier: GPL-3.0-or-later
// What tracert and pathping are told on their command lines.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "console/destination_options.h"

namespace veltrin {

// What both are told.
struct RouteSettings : DestinationSettings {
  bool resolveNames = true;
  int hops = 30;                         // -h: 1 to 255
  std::vector<std::string> through;      // hosts to pass, at most kThroughMost
  std::optional<std::uint64_t> timeout;  // -w: milliseconds, 0 to 4294967295
};

// -d turns resolveNames off, -j is the hosts to pass, -S the source.
struct TracertSettings : RouteSettings {};

// -n turns resolveNames off, -g is the hosts to pass, -i the source.
struct PathpingSettings : RouteSettings {
  std::uint64_t queries = 100;  // -q: to each hop, 1 to 65535
  std::uint64_t period = 250;   // -p: milliseconds from query to query, 1 to 3600000
  bool sideBySide = false;      // -b: the period is that of each hop by itself
  bool reservations = false;    // -P
  bool reservingHops = false;   // -R
  bool priorities = false;      // -T
};

// The outcome of reading a command line.
template <typename Settings>
struct RouteCommand {
  Settings settings;
  // The sentence to print in place of a run; empty when there is none.
  std::string problem;
  // Whether to print the usage, behind the sentence when there is one.
  bool usage = false;
  // Whether the usage was asked for; else its printing is a failure.
  bool help = false;
};

using TracertCommand = RouteCommand<TracertSettings>;
using PathpingCommand = RouteCommand<PathpingSettings>;

// Read the arguments, without the program's name. Letters may be of either case,
// save pathping's P, whose two cases mean two options. The hosts to pass are the
// words behind their option, or one word with commas; when nothing else names the
// destination, the last of several words does.
TracertCommand readTracertCommand(const std::vector<std::string>& arguments);
PathpingCommand readPathpingCommand(const std::vector<std::string>& arguments);

// The lines that "-?" prints, first the empty one.
std::string_view tracertUsage();
std::string_view pathpingUsage();

}  // namespace veltrin
