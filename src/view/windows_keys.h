// SPDX-License-Identifier: GPL-3.0-or-later
// Keys by their numbers on Windows, as the routines of windows know them.
#pragma once

#include <cstdint>

#include <QKeyEvent>

namespace veltrin {

// The virtual-key code of a key (winuser.h, VK_*); 0 of one that has none here.
std::int16_t keyCodeOf(const QKeyEvent& key);

// The keys that are held with it: 1 for the shift key, 2 for control, 4 for alt.
std::int16_t shiftOf(const QKeyEvent& key);

// The number of the character that a key types, up to 255 as in Latin-1; 0 of none.
std::int16_t characterOf(const QKeyEvent& key);

}  // namespace veltrin
