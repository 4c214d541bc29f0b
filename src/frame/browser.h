// The browser in which the pages of the product open.
#pragma once

#include <string>

#include "platform/environment.h"

namespace veltrin {

// Full path of the one browser that every Windows has.
inline std::string browserPath(const Environment& environment) {
  return environment.variable("ProgramFiles") + "\\Internet Explorer\\IEXPLORE.EXE";
}

}  // namespace veltrin
