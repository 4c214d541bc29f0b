// SPDX-License-Identifier: GPL-3.0-or-later
// What the program's own widgets are to a screen reader.
#pragma once

namespace veltrin {

// Lets a screen reader know dials, curves, charts and clips by their kinds, and read what a
// dial shows as a value between its ends. To be called once, before there are windows.
void tellKindsOfWidgets();

}  // namespace veltrin
