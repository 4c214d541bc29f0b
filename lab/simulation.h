// SPDX-License-Identifier: GPL-3.0-or-later
// The loop that joins the simulated Internet to the lab's interfaces.
#pragma once

#include <sys/types.h>

#include "lab/command.h"
#include "lab/internet.h"

namespace veltrin::lab {

// The descriptors of the interfaces on both sides of the simulated Internet.
struct Interfaces {
  int machine = -1;
  int servers = -1;  // -1 when no host serves
};

// Answers what the machine's interface sends and carries what goes to and comes from the
// servers', each packet at its moment, until the process `child` has ended. Passes signals
// on to it meanwhile. Gives its exit code.
int simulate(Internet& internet, const Interfaces& interfaces, const WaitedSignals& signals,
             pid_t child);

}  // namespace veltrin::lab
