// SPDX-License-Identifier: GPL-3.0-or-later
// The accounts of a system that its own files tell, /etc/passwd and /etc/group. Those of a
// directory in the network are not among them.
#pragma once

#include <string>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

struct AccountFacts {
  std::string name;
  // A user's full name (the field GECOS of passwd(5) up to its first comma); empty without,
  // and for a group.
  std::string description;
  bool group = false;
};

// The users, then the groups, each in the order of their file.
std::vector<AccountFacts> localAccounts(const FileTree& files);

}  // namespace veltrin
