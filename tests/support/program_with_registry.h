// SPDX-License-Identifier: GPL-3.0-or-later
// A program on the simulated platform, with a registry that is none of it.
#pragma once

#include "support/simulation.h"

namespace veltrin {

struct ProgramWithRegistry {
  // The registry has to live longer.
  explicit ProgramWithRegistry(Registry& registry)
      : platform{rest.loop,       rest.loop,     rest.clock,  rest.desktop,     rest.files,
                 rest.processes,  rest.profiles, registry,    rest.shell,       rest.environment,
                 rest.sockets,    rest.counters, rest.wmi,    rest.icmp,        rest.downloads,
                 rest.interfaces, rest.printers, rest.drives, rest.processList, "Veltrin"},
        program(platform) {}

  Simulation rest;
  Platform platform;
  Program program;
};

}  // namespace veltrin
