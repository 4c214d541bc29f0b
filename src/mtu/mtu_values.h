// SPDX-License-Identifier: GPL-3.0-or-later
// What the windows of the MTU optimizer share, and where the system keeps an MTU.
#pragma once

#include <string>

#include "frame/mdlRegistry.h"
#include "frame/program.h"
#include "text/loose.h"

namespace veltrin {

struct MtuValues {
  Loose OriginalMtu;    // what the registry held; empty when it held none
  std::string MtuSite;  // destination of the pings before the search
};

// The value stands in the key of all interfaces; none of them is chosen.
inline const std::string kMtuName = "MTU";

// Where the settings keep that the search has run ("1") and the site.
inline const char* const kMtuSection = "Settings";
inline const char* const kMtuDone = "MTU";
inline const char* const kMtuSiteKey = "MTU Site";

// Title of the optimizer's messages.
inline const char* const kMtuTitle = "Veltrin";

inline Loose readMtu(const Program& program) {
  return readRegistryValue(program.platform.registry, kHkeyLocalMachine, kInterfacesKey, kMtuName);
}

// Stores the digits of an MTU as a text. Nothing is stored where the user may not.
inline void writeMtu(const Program& program, const Loose& mtu) {
  writeRegistryValue(program.platform.registry, kHkeyLocalMachine, kInterfacesKey, kMtuName, mtu,
                     kRegSz);
}

}  // namespace veltrin
