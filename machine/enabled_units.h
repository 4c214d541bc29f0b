// SPDX-License-Identifier: GPL-3.0-or-later
// What systemd starts with the system, or when a user logs in.
#pragma once

#include <string>
#include <vector>

#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

struct UnitFacts {
  std::string name;         // "cups.service"
  std::string description;  // of the unit's file, its specifiers filled in; empty without
  std::string folder;       // of the link that enables it
};

// The enabled units: of the system, of all users, and of this user, each by the folders and the
// names of their links. A unit that two others want has a link in the folders of both. One that
// is masked, or of which there is no file any more, is not started and not among them.
std::vector<UnitFacts> enabledUnits(const FileTree& files, const Machine& machine);

}  // namespace veltrin
