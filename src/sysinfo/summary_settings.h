// SPDX-License-Identifier: GPL-3.0-or-later
// The summary of the machine in the settings file, a record for the user.
#pragma once

#include "frame/program.h"

namespace veltrin {

// Writes today's date and the fields that both forms of the summary read, in their
// order, to the section "SysInfo".
void storeSummary(Program& program);

// Writes the network cards, as many as there are up to three, to the same section.
void storeNetCards(Program& program, double count);

// Writes the memory slots that are not empty to the same section.
void storeMemorySlots(Program& program);

}  // namespace veltrin
