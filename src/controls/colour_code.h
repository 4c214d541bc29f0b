// SPDX-License-Identifier: GPL-3.0-or-later
// Colours as numbers of 32 bits, as controls keep them.
#pragma once

#include <cstdint>

#include "forms/control.h"

namespace veltrin {

// Blue, green and red from the third byte to the lowest, or, with the highest bit set, the
// number of one of the system's colours.
using ColourCode = std::uint32_t;

inline constexpr ColourCode kButtonFace = 0x8000000F;
inline constexpr ColourCode kButtonText = 0x80000012;

// The plain colour. The system's colours are those of the program's own look; a number that
// the system does not know is black.
Colour translated(ColourCode code);

// `from` at 0 and below, `to` at 1 and above, and between them that share of the way, each
// of red, green and blue rounded to a whole number, halves to the even one.
Colour blend(float share, const Colour& to, const Colour& from);

}  // namespace veltrin
