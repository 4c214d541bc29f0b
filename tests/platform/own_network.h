// SPDX-License-Identifier: GPL-3.0-or-later
// A network of a test's own, in which nothing is but the loopback interface (Linux).
#pragma once

#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <sched.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veltrin {

inline bool writeSetting(const std::string& path, const std::string& text) {
  const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool written = write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  close(file);
  return written;
}

inline bool letsInterfaceUp(const char* name) {
  const int any = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  ifreq request{};
  std::snprintf(request.ifr_name, sizeof request.ifr_name, "%s", name);
  request.ifr_flags = IFF_UP;
  const bool up = ioctl(any, SIOCSIFFLAGS, &request) == 0;
  close(any);
  return up;
}

// Lets this user open the kernel's sockets for everyone's echoes. In a new network nobody
// may.
inline bool allowEchoes() {
  const std::string group = std::to_string(getegid());
  return writeSetting("/proc/sys/net/ipv4/ping_group_range", group + " " + group);
}

// No echo to this network is answered by its kernel.
inline bool silenceKernel() { return writeSetting("/proc/sys/net/ipv4/icmp_echo_ignore_all", "1"); }

// Takes this process there, for good, through a user namespace where it is not root.
inline bool enterOwnNetwork() {
  const std::string user = std::to_string(geteuid()) + " " + std::to_string(geteuid()) + " 1";
  const std::string group = std::to_string(getegid()) + " " + std::to_string(getegid()) + " 1";
  if (unshare(CLONE_NEWNET) != 0) {
    if (unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) return false;
    if (!writeSetting("/proc/self/setgroups", "deny")) return false;
    if (!writeSetting("/proc/self/uid_map", user)) return false;
    if (!writeSetting("/proc/self/gid_map", group)) return false;
  }
  return letsInterfaceUp("lo");
}

// Carries out a routine of a test in a child process in a network of its own. Failures in
// it fail the test; the test is skipped where there can be no such network, and when it
// skips itself.
template <class Routine>
void inOwnNetwork(Routine routine) {
  constexpr int kCannot = 77;
  constexpr int kSkipped = 78;
  std::fflush(nullptr);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    if (!enterOwnNetwork()) _exit(kCannot);
    routine();
    std::fflush(nullptr);
    const int skipped = testing::Test::IsSkipped() ? kSkipped : 0;
    _exit(testing::Test::HasFailure() ? 1 : skipped);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
  if (WEXITSTATUS(status) == kCannot) {
    GTEST_SKIP() << "this machine gives a test no network of its own: neither root's rights nor "
                    "user namespaces are there";
  }
  if (WEXITSTATUS(status) == kSkipped) GTEST_SKIP() << "see the reason above";
  ASSERT_EQ(WEXITSTATUS(status), 0) << "see the failures above";
}

}  // namespace veltrin
