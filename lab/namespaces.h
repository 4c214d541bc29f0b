// SPDX-License-Identifier: GPL-3.0-or-later
// The walls of the lab: a network and a mount namespace of its own, with its own
// resolver settings.
#pragma once

#include <filesystem>

#include "lab/scenario.h"

namespace veltrin::lab {

// Moves this process into a network and a mount namespace of its own, through a
// user namespace where it may not do so directly. Lets every user there send
// ICMP echoes without privileges. Throws CannotRun.
void enterNamespaces();

// Puts the lab's resolver settings in place of the system's, and the scenario's settings
// into the file `installation` of the program's, if that is there; in this mount
// namespace alone: no folder that others see holds anything of it. Throws
// CannotRun.
void installFiles(const Scenario& scenario, const std::filesystem::path& installation);

}  // namespace veltrin::lab
