// The loop that joins the simulated Internet to the lab's interface.
#pragma once

#include <sys/types.h>

#include "lab/command.h"
#include "lab/internet.h"

namespace veltrin::lab {

// Answers what the interface sends, each packet at its moment, until the process
// `child` has ended. Passes signals on to it meanwhile. Gives its exit code.
int simulate(Internet& internet, int interface, const WaitedSignals& signals, pid_t child);

}  // namespace veltrin::lab
