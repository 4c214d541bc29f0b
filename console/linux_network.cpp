// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/linux_network.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <ctime>
#include <netdb.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>
#include <utility>

#include "console/socket_addresses.h"

namespace veltrin {
namespace {

// Of a send that fails for other echoes' errors.
constexpr int kSendTries = 8;

// A port for a socket that never sends ("discard", RFC 863).
constexpr std::uint16_t kAnyPort = 9;

volatile std::sig_atomic_t interrupted = 0;

void noteInterrupt(int /*signal*/) { interrupted = 1; }

// The signals that are let through during a wait. Outside of one an interrupt is
// kept back, so that none gets lost between a look at the flag and the wait.
sigset_t waitingSignals;

void catchInterrupt() {
  struct sigaction before {};
  sigaction(SIGINT, nullptr, &before);
  sigprocmask(SIG_BLOCK, nullptr, &waitingSignals);
  sigdelset(&waitingSignals, SIGINT);
  if (before.sa_handler == SIG_IGN) {
    return;
  }
  sigset_t interrupt;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  sigprocmask(SIG_BLOCK, &interrupt, nullptr);
  struct sigaction action {};
  action.sa_handler = noteInterrupt;
  sigaction(SIGINT, &action, nullptr);
}

int systemFamily(FamilyChoice choice) {
  switch (choice) {
    case FamilyChoice::IPv4:
      return AF_INET;
    case FamilyChoice::IPv6:
      return AF_INET6;
    case FamilyChoice::Any:
      break;
  }
  return AF_UNSPEC;
}

std::optional<Address> lookUp(const std::string& name, FamilyChoice choice, int flags) {
  addrinfo wanted{};
  wanted.ai_family = systemFamily(choice);
  wanted.ai_socktype = SOCK_DGRAM;
  wanted.ai_flags = flags;
  addrinfo* found = nullptr;
  if (getaddrinfo(name.c_str(), nullptr, &wanted, &found) != 0) {
    return std::nullopt;
  }
  const std::optional<Address> first = fromSocketAddress(found->ai_addr, found->ai_addrlen);
  freeaddrinfo(found);
  return first;
}

bool fits(Family family, FamilyChoice choice) {
  return choice == FamilyChoice::Any || (choice == FamilyChoice::IPv4) == (family == Family::IPv4);
}

timespec spanOf(Microseconds time) {
  return {static_cast<time_t>(time / kSecond), static_cast<long>(time % kSecond * 1000)};
}

}  // namespace

LinuxNetwork::LinuxNetwork() {
  ipv4_.open(Family::IPv4);
  ipv6_.open(Family::IPv6);
}

std::optional<Destination> LinuxNetwork::resolve(const std::string& name, FamilyChoice choice) {
  // The usual forms first: they need no resolver, which takes time to load.
  if (const auto address = Address::parse(name)) {
    return fits(address->family, choice) ? std::optional(Destination{*address, true})
                                         : std::nullopt;
  }
  if (const auto address = lookUp(name, choice, AI_NUMERICHOST)) {
    return Destination{*address, true};
  }
  if (const auto address = lookUp(name, choice, 0)) {
    return Destination{*address, false};
  }
  return std::nullopt;
}

std::optional<std::string> LinuxNetwork::nameOf(const Address& address) {
  return lookUpName(address);
}

std::optional<NameAnswer> LinuxNetwork::takeName() {
  return name_ ? std::exchange(name_, std::nullopt) : names_.take();
}

// A datagram socket that is joined to a destination sends nothing, yet the kernel
// has chosen the way to it.
std::optional<Address> LinuxNetwork::sourceFor(const Address& destination) {
  SocketAddress form = toSocketAddress(destination);
  const bool ipv4 = destination.family == Family::IPv4;
  (ipv4 ? form.v4.sin_port : form.v6.sin6_port) = htons(kAnyPort);
  const int file = socket(ipv4 ? AF_INET : AF_INET6, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (file < 0) {
    return std::nullopt;
  }
  SocketAddress own{};
  socklen_t size = sizeof own;
  const bool known = connect(file, &form.any, sizeOf(destination.family)) == 0 &&
                     getsockname(file, &own.any, &size) == 0;
  close(file);
  return known ? fromSocketAddress(&own.any, size) : std::nullopt;
}

std::string LinuxNetwork::hostName() {
  std::array<char, HOST_NAME_MAX + 1> name{};
  gethostname(name.data(), name.size() - 1);
  return name.data();
}

OpenResult LinuxNetwork::open(Family family, const std::optional<Address>& source) {
  socket_ = family == Family::IPv4 ? &ipv4_ : &ipv6_;
  (family == Family::IPv4 ? ipv6_ : ipv4_).close();
  if (!socket_->isOpen()) {
    return OpenResult::NotAllowed;
  }
  if (source && !socket_->bindTo(*source)) {
    return OpenResult::BadSource;
  }
  socket_->prepare();
  catchInterrupt();
  return OpenResult::Opened;
}

// Reads the errors that wait. True when there was one about an earlier echo.
bool LinuxNetwork::keepErrors() {
  bool any = false;
  Incoming error;
  for (;;) {
    switch (socket_->readError(error)) {
      case EchoSocket::Reading::Taken:
        kept_.push_back(error);
        any = true;
        break;
      case EchoSocket::Reading::Ignored:
        any = true;
        break;
      default:
        return any;
    }
  }
}

Sending LinuxNetwork::send(const EchoRequest& request) {
  Sending sending{SendResult::Sent, now()};
  int failure = socket_->send(request);
  // A send also fails for the error of an earlier echo that nobody has read yet:
  // once those are read, it says what is true of this one. With many echoes under
  // way the next error may be there already. The kernel queues an error before it
  // marks the socket with it (net/ipv4/ping.c, ping_err), so the mark may also be
  // of an error that was read before: an empty queue proves nothing the first time.
  bool sawNone = false;
  for (int tries = 0; failure != 0 && failure != EMSGSIZE && tries < kSendTries && !sawNone;
       ++tries) {
    sawNone = !keepErrors() && tries > 0;
    sending.at = now();
    failure = socket_->send(request);
  }
  if (failure != 0) {
    keepErrors();
    sending.result = failure == EMSGSIZE ? SendResult::TooBig : SendResult::Failed;
  }
  return sending;
}

bool LinuxNetwork::take(Incoming& incoming) {
  if (!kept_.empty()) {
    incoming = std::move(kept_.front());
    kept_.pop_front();
    return true;
  }
  for (;;) {
    switch (socket_->readReply(incoming)) {
      case EchoSocket::Reading::Taken:
        return true;
      case EchoSocket::Reading::Nothing:
        return false;
      case EchoSocket::Reading::Ignored:
        break;
      case EchoSocket::Reading::Error:
        keepErrors();
        if (!kept_.empty()) {
          return take(incoming);
        }
    }
  }
}

WaitEnd LinuxNetwork::wait(Microseconds deadline, Incoming& incoming) {
  for (;;) {
    if (interrupted != 0) {
      return WaitEnd::Interrupted;
    }
    if (take(incoming)) {
      return WaitEnd::Arrived;
    }
    if (!name_) {
      name_ = names_.take();
    }
    if (name_) {
      return WaitEnd::NameCame;
    }
    const Microseconds left = deadline - now();
    if (left <= 0) {
      return WaitEnd::TimedOut;
    }
    const timespec time = spanOf(left);
    std::array<pollfd, 2> sources{{{socket_->file(), POLLIN, 0}, {names_.file(), POLLIN, 0}}};
    if (ppoll(sources.data(), sources.size(), &time, &waitingSignals) > 0 &&
        (sources[0].revents & POLLERR) != 0) {
      keepErrors();
    }
  }
}

void LinuxNetwork::rest(Microseconds until) {
  const Microseconds left = until - now();
  if (left > 0 && interrupted == 0) {
    const timespec time = spanOf(left);
    ppoll(nullptr, 0, &time, &waitingSignals);
  }
}

Microseconds LinuxNetwork::now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<Microseconds>(time.tv_sec) * kSecond + time.tv_nsec / 1000;
}

}  // namespace veltrin
