// SPDX-License-Identifier: GPL-3.0-or-later
// The counters of the Internet protocol, version 6.
#pragma once

#include "frame/program.h"

namespace veltrin {

// Adds the 17 counters to the program's query; lets events run.
void AddIPv6Counters(Program& program);

// Samples the query and reads the 17 counters; lets events run.
void ReadIPv6Counters(Program& program);

}  // namespace veltrin
