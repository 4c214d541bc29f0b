// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the system's report that tells what runs.
#pragma once

#include <cstdint>

#include "frame/program.h"

namespace veltrin {

class frmSysInfo;

// What the listing leaves for the program.
struct TaskValues {
  std::int32_t ProcessCount = 0;  // processes of the last listing
};

// Prints the running processes, and for each that the user may open the files that it has
// loaded, to the report's window; without one nothing is printed. What fails is passed over.
void modTasks(Program& program, frmSysInfo* window);

}  // namespace veltrin
