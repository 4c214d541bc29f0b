// SPDX-License-Identifier: GPL-3.0-or-later
// The browser in which the pages of the product open.
#pragma once

#include <string>

#include "frame/program.h"

namespace veltrin {

// Full path of the one browser that every Windows has.
inline std::string browserPath(const Environment& environment) {
  return environment.variable("ProgramFiles") + "\\Internet Explorer\\IEXPLORE.EXE";
}

// Opens the page that tells how to use the tools. A missing browser is not reported.
inline void openHelpPage(Program& program) {
  program.platform.shell.execute("Open", browserPath(program.platform.environment),
                                 program.installation.HelpPageUrl, "", kShowNormal);
}

}  // namespace veltrin
