// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/setting_folders.h"

#include "machine/fact_text.h"

namespace veltrin {

std::string userSettings(const Machine& machine) {
  const std::string told = machine.environment("XDG_CONFIG_HOME");
  const std::string home = machine.environment("HOME");
  return told.starts_with('/') ? told : home.empty() ? "" : home + "/.config";
}

std::vector<std::string> systemSettings(const Machine& machine) {
  auto folders = piecesOf(machine.environment("XDG_CONFIG_DIRS"), ':');
  std::erase_if(folders, [](const std::string& folder) { return !folder.starts_with('/'); });
  return folders.empty() ? std::vector<std::string>{"/etc/xdg"} : folders;
}

}  // namespace veltrin
