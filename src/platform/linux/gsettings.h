// SPDX-License-Identifier: GPL-3.0-or-later
// The settings that programs of GNOME, Cinnamon and MATE share.
#pragma once

#include <optional>
#include <string>

namespace veltrin {

// What holds at present of a setting: the user's choice, else the administrator's, else the
// program's own. In the form of machine/desktop.h; nothing when there is no such setting, or
// the system has no GSettings.
//
// The library of GSettings is loaded with the first call. A program that is never asked for
// the desktop pays nothing, and one on a system without it runs all the same.
std::optional<std::string> gsetting(const std::string& schema, const std::string& key);

}  // namespace veltrin
