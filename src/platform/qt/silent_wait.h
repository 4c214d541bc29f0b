// SPDX-License-Identifier: GPL-3.0-or-later
// How the program waits for a console tool, or an echo's answer, that is silent.
#pragma once

#include "platform/qt/qt_event_loop.h"

namespace veltrin {

// Sleeps until a descriptor can be read or tells of an error (Linux), at most so many
// milliseconds; -1 for as long as it takes. Windows are painted and the window system is
// answered meanwhile; the gate stays as it is, and so no routine runs.
void sleepUntilReadable(QtEventLoop& events, int descriptor, int milliseconds = -1);

// The same until an event object (a HANDLE) is signalled (Windows).
void sleepUntilSignalled(QtEventLoop& events, void* event);

}  // namespace veltrin
