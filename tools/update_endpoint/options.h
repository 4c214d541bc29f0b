// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the command line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/update_endpoint/address.h"
#include "tools/update_endpoint/dialogue.h"
#include "tools/update_endpoint/limits.h"

namespace veltrin::endpoint {

// Exit codes of the program.
inline constexpr int kExitDone = 0;         // ended by SIGTERM or SIGINT; the help was shown
inline constexpr int kExitCannotServe = 1;  // a socket cannot be had; the reason is told
inline constexpr int kExitUsage = 2;        // the command line is not understood

struct Options {
  bool help = false;
  std::string version;
  std::vector<std::uint16_t> ports{kUsualPorts.begin(), kUsualPorts.end()};
  std::vector<Address> addresses;  // empty: all of this machine, of both versions
  // Whether --ports or --listen was given.
  bool choosesSockets = false;
  Limits limits;
  // The first mistake as a sentence; empty when there is none. With one, nothing else
  // here means anything.
  std::string mistake;
};

// The arguments without the program's name.
Options readOptions(const std::vector<std::string>& arguments);

// What -? and --help print, with a line break at the end.
std::string usage();

}  // namespace veltrin::endpoint
