// SPDX-License-Identifier: GPL-3.0-or-later
// The signals that end the server.
#pragma once

#include "tools/update_endpoint/descriptor.h"

namespace veltrin::endpoint {

// From now on SIGTERM and SIGINT wait in this descriptor, which is readable when one
// of them came, and do nothing else. SIGPIPE is ignored: a standard output that nobody
// reads any more is no reason to leave callers without an answer. Throws CannotServe.
Descriptor collectEndSignals();

}  // namespace veltrin::endpoint
