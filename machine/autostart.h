// SPDX-License-Identifier: GPL-3.0-or-later
// The programs that a desktop starts when its user logs in.
#pragma once

#include <string>
#include <vector>

#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

struct AutostartFacts {
  std::string file;     // its name, "clipboard.desktop"
  std::string folder;   // where that lies
  std::string caption;  // the program's name, in English; the file's when it has none
  std::string comment;  // empty without
  std::string command;
};

// The programs that the present desktop starts for this user (Desktop Application Autostart
// Specification), those of the user before the system's, by the names of their files. Not
// among them: what is hidden, switched off, for other desktops, or for a program that is not
// installed.
std::vector<AutostartFacts> autostartPrograms(const FileTree& files, const Machine& machine);

}  // namespace veltrin
