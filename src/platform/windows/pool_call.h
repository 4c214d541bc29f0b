// SPDX-License-Identifier: GPL-3.0-or-later
// Calls of the system that block, carried out beside the program's own thread.
#pragma once

#include <functional>

namespace veltrin {

// Called while such a call blocks, with an event (a HANDLE) that is signalled when it has
// returned. Should return when it is; it may wait for the event and for window messages
// together.
using WhileSilent = std::function<void(void* event)>;

// Does `work` on a thread of the system's pool, calls `whileSilent` meanwhile, and waits
// until the work is done. False, and nothing is done, when the system has no event or
// thread for it. The work must own what it writes to: it goes on when `whileSilent` throws.
bool callInPool(std::function<void()> work, const WhileSilent& whileSilent);

}  // namespace veltrin
