// SPDX-License-Identifier: GPL-3.0-or-later
// The drivers of a system: the modules of its kernel.
#pragma once

#include <string>
#include <vector>

#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

// How a module comes to run.
enum class ModuleStart {
  WithKernel,  // it is a part of the kernel's own file
  AtStart,     // the system loads it at its start, by its settings
  OnDemand,    // something asked for it, such as a device or another module
};

struct ModuleFacts {
  std::string name;         // "snd_hda_intel"
  std::string description;  // in its author's words; empty when it is not told
  std::string path;         // of its file; empty when there is none, or none is listed
  ModuleStart start = ModuleStart::OnDemand;
};

// The loaded modules and those in the kernel's file, by their names. A module whose file is
// compressed does not tell its description here: to unpack a hundred of them takes longer than
// all the rest.
std::vector<ModuleFacts> kernelModules(const FileTree& files, const Machine& machine);

}  // namespace veltrin
