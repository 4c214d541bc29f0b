// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/signals.h"

#include <csignal>
#include <sys/signalfd.h>

namespace veltrin::endpoint {

Descriptor collectEndSignals() {
  std::signal(SIGPIPE, SIG_IGN);
  sigset_t ends;
  sigemptyset(&ends);
  sigaddset(&ends, SIGTERM);
  sigaddset(&ends, SIGINT);
  if (sigprocmask(SIG_BLOCK, &ends, nullptr) != 0) failWithErrno("Signals cannot be held back");
  return opened(signalfd(-1, &ends, SFD_NONBLOCK | SFD_CLOEXEC), "Signals cannot be collected");
}

}  // namespace veltrin::endpoint
