// SPDX-License-Identifier: GPL-3.0-or-later
// The order of the report.
#pragma once

#include "sysinfo/DosApp.h"
#include "sysinfo/report.h"

namespace veltrin {

// Prints the sections that the window's user ticked, one behind the other, each as soon as
// the machine has told about it. Nothing else runs meanwhile. `buffers` has the hotfixes, and
// prints the drives.
void printReport(Report& report, DosApp& buffers);

}  // namespace veltrin
