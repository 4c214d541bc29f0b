// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/modIsItRunning.h"

namespace veltrin {

std::uint32_t runningWindow(Desktop& desktop, const std::string& title) {
  const std::string present = desktop.applicationTitle();
  desktop.setApplicationTitle("Some Junk Title");
  const std::uint32_t found = desktop.findWindow(title);
  desktop.setApplicationTitle(present);
  return found;
}

}  // namespace veltrin
