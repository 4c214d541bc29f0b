// SPDX-License-Identifier: GPL-3.0-or-later
// The language of a system and the keyboard that it is written on.
#pragma once

#include <string>

#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

// The system's language and country, "en-us;English (United States)", from the
// system's settings, or without those from the environment. A locale without a
// language, such as "C.UTF-8", stands as it is. Empty when none is set.
std::string systemLocale(const FileTree& files, const Machine& machine);

// The first keyboard layout of the system with its name, "us;English (US)", or
// "de(nodeadkeys);German (no dead keys)". Where no keyboard is set up it is the
// locale by which this process reads characters. Empty when none is set.
std::string inputLocale(const FileTree& files, const Machine& machine);

}  // namespace veltrin
