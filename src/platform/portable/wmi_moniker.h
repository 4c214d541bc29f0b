// SPDX-License-Identifier: GPL-3.0-or-later
// Monikers by which a program finds the service of WMI.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veltrin {

// "winmgmts:\\MACHINE\root\cimv2", or with its settings
// "winmgmts:{impersonationLevel=impersonate}!\\MACHINE\root\cimv2".
struct WmiMoniker {
  // How far the service may act for the user: 1 anonymous, 2 identify, 3 impersonate, 4 delegate.
  std::uint32_t impersonationLevel = 3;

  std::string machine;    // its name, "." for this one
  std::string spaceName;  // "root\cimv2"
};

// The parts of a moniker, whose words ignore case; blanks may stand behind "winmgmts:".
// Nothing for a text of any other form, also for one that names no machine.
std::optional<WmiMoniker> wmiMonikerOf(std::string_view text);

}  // namespace veltrin
