// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/service_manager.h"

#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

#include "tools/update_endpoint/limits.h"

namespace veltrin::endpoint {
namespace {

constexpr long kMostHandedOver = static_cast<long>(kMostSockets);

std::optional<long> numberIn(std::string_view text) {
  long number = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec != std::errc{} || read.ptr != end) return std::nullopt;
  return number;
}

}  // namespace

int countHandedOver(const char* listenPid, const char* listenFds, pid_t self) {
  if (listenPid == nullptr || listenFds == nullptr) return 0;
  const auto process = numberIn(listenPid);
  if (!process) throw CannotServe(std::string("LISTEN_PID is no number: ") + listenPid);
  if (*process != self) return 0;
  const auto count = numberIn(listenFds);
  if (!count || *count < 0 || *count > kMostHandedOver) {
    throw CannotServe("LISTEN_FDS is no number from 0 to " + std::to_string(kMostHandedOver) +
                      ": " + listenFds);
  }
  return static_cast<int>(*count);
}

std::vector<Descriptor> takeHandedOver() {
  const int count = countHandedOver(getenv("LISTEN_PID"), getenv("LISTEN_FDS"), getpid());
  for (const char* name : {"LISTEN_PID", "LISTEN_FDS", "LISTEN_FDNAMES"}) unsetenv(name);
  std::vector<Descriptor> sockets;
  for (int at = 0; at < count; ++at) {
    const int number = kFirstHandedOver + at;
    if (fcntl(number, F_SETFD, FD_CLOEXEC) != 0) {
      failWithErrno("Descriptor " + std::to_string(number) + " of the service manager");
    }
    sockets.emplace_back(number);
  }
  return sockets;
}

std::optional<NotifyAddress> notifyAddressOf(const std::string& text) {
  NotifyAddress result;
  const bool isPath = text.starts_with('/');
  const bool isName = text.starts_with('@') && text.size() > 1;
  // A path is ended by a zero, for which there must be room, too.
  const std::size_t room = sizeof(result.address.sun_path) - (isPath ? 1 : 0);
  if ((!isPath && !isName) || text.size() > room) return std::nullopt;
  result.address.sun_family = AF_UNIX;
  std::memcpy(result.address.sun_path, text.data(), text.size());
  if (isName) result.address.sun_path[0] = '\0';
  result.length =
      static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + text.size() + (isPath ? 1 : 0));
  return result;
}

bool tellManager(const std::string& state) {
  const char* const text = getenv("NOTIFY_SOCKET");
  if (text == nullptr || *text == '\0') return true;
  const auto place = notifyAddressOf(text);
  const Descriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (!place || socket.get() < 0) return false;
  const ssize_t sent = sendto(socket.get(), state.data(), state.size(), MSG_NOSIGNAL,
                              reinterpret_cast<const sockaddr*>(&place->address), place->length);
  return sent == static_cast<ssize_t>(state.size());
}

}  // namespace veltrin::endpoint
