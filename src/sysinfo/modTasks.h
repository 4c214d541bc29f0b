// The processes that run, for the report of the system.
#pragma once

#include "frame/program.h"
#include "sysinfo/frmSysInfo.h"

namespace veltrin {

// Prints the processes, and the modules of those that may be looked into, into a window.
void modTasks(Program& program, frmSysInfo* window);

}  // namespace veltrin
