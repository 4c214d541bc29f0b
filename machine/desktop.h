// SPDX-License-Identifier: GPL-3.0-or-later
// How a user has set up the desktop.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

// Nothing, or empty, where the desktop does not have it or does not tell.
struct DesktopFacts {
  std::optional<std::uint64_t> cursorBlink;  // ms for which a cursor is seen, and then not
  std::optional<bool> dragFullWindows;       // not only frames of them
  std::optional<std::uint64_t> iconTitle;    // points of the letters below icons
  std::optional<bool> saverActive;           // after a time without keys and mouse
  std::optional<std::uint64_t> saverTime;    // seconds
  std::optional<bool> saverSecure;           // asks for a password
  std::string wallpaper;                     // its file
  std::optional<bool> stretched;             // the wallpaper, out of its shape if need be
  std::optional<bool> tiled;
};

// A setting by GSettings schema and key: texts as they are, numbers in decimal, flags as "true"
// or "false". Nothing when there is no such setting.
using SettingOf =
    std::function<std::optional<std::string>(const std::string& schema, const std::string& key)>;

// Of the user whose environment the machine has. KDE's and Xfce's settings are read from files;
// those of GNOME and its kin, of Cinnamon and MATE come by `setting`, which may be null.
DesktopFacts desktopFacts(const FileTree& files, const Machine& machine, const SettingOf& setting);

}  // namespace veltrin
