// SPDX-License-Identifier: GPL-3.0-or-later
// The folders in which desktops and their programs keep settings (XDG Base Directory
// Specification). A path that is not absolute does not count.
#pragma once

#include <string>
#include <vector>

#include "machine/machine.h"

namespace veltrin {

// The user's own: $XDG_CONFIG_HOME, or ~/.config; empty for a user without a home.
std::string userSettings(const Machine& machine);

// The system's by their rank: $XDG_CONFIG_DIRS, or /etc/xdg.
std::vector<std::string> systemSettings(const Machine& machine);

}  // namespace veltrin
