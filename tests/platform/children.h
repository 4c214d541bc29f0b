// SPDX-License-Identifier: GPL-3.0-or-later
// What has become of the children that a test has started (Linux).
#pragma once

#include <cerrno>
#include <chrono>
#include <sys/wait.h>
#include <thread>

namespace veltrin {

// Waits until this program has no child left, neither running nor dead. False
// when one is dead and nobody has reaped it for ten seconds.
inline bool noChildRemains() {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  siginfo_t info{};
  while (waitid(P_ALL, 0, &info, WEXITED | WNOWAIT) == 0) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::yield();
  }
  return errno == ECHILD;
}

}  // namespace veltrin
