// SPDX-License-Identifier: GPL-3.0-or-later
// The two things between this server and a service manager such as systemd:
// listening sockets that are handed over (sd_listen_fds(3)), and the word that the
// server is ready (sd_notify(3)).
#pragma once

#include <optional>
#include <string>
#include <sys/socket.h>
#include <sys/types.h>
#include <sys/un.h>
#include <vector>

#include "tools/update_endpoint/descriptor.h"

namespace veltrin::endpoint {

// The first descriptor that is handed over; the others follow.
inline constexpr int kFirstHandedOver = 3;

// How many sockets are handed over to the process `self`, by the variables LISTEN_PID
// and LISTEN_FDS (null when not set). None when they are meant for another process.
// Throws CannotServe when they make no sense.
int countHandedOver(const char* listenPid, const char* listenFds, pid_t self);

// Takes the sockets that this process was handed over, and the variables out of the
// environment. Throws as above.
std::vector<Descriptor> takeHandedOver();

struct NotifyAddress {
  sockaddr_un address{};
  socklen_t length = 0;
};

// The address in the variable NOTIFY_SOCKET: a path, or with a leading @ a name that
// is in no folder (unix(7), "abstract"). Nothing for any other text.
std::optional<NotifyAddress> notifyAddressOf(const std::string& text);

// Tells the service manager a state such as "READY=1", when there is one that asks.
// False when it asks and cannot be told.
bool tellManager(const std::string& state);

}  // namespace veltrin::endpoint
