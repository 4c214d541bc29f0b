// How the program waits for a console tool that is silent.
#pragma once

#include "platform/qt/qt_event_loop.h"

namespace veltrin {

// Sleeps until a descriptor can be read (Linux). Windows are painted and the window
// system is answered meanwhile; the gate stays as it is, and so no routine runs.
void sleepUntilReadable(QtEventLoop& events, int descriptor);

// The same until an event object (a HANDLE) is signalled (Windows).
void sleepUntilSignalled(QtEventLoop& events, void* event);

}  // namespace veltrin
