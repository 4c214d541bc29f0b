// SPDX-License-Identifier: GPL-3.0-or-later
// A number that tells this installation from others.
#pragma once

#include <string>

#include "machine/machine.h"

namespace veltrin {

// What the ID of this program on an installation is asked with. Drawn once by chance; this
// program's own.
inline constexpr Id128 kProductApplication{0x7E, 0xEF, 0x91, 0xAA, 0x14, 0xB6, 0xB4, 0x9F,
                                           0x29, 0x1D, 0x7F, 0x6D, 0xA4, 0xFE, 0xFC, 0x7D};

// Four groups of five characters, "3K7QD-0V9XN-A1B2C-ZZ5RT". They stay the same as
// long as the system is not installed anew, and tell nobody the machine ID from
// which they come: machine-id(5) asks programs to show no more than a keyed hash of
// it that is theirs alone. Empty when the machine has no such ID.
std::string productId(const Machine& machine);

}  // namespace veltrin
