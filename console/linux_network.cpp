#include "console/linux_network.h"

#include <array>
#include <csignal>
#include <ctime>
#include <netdb.h>
#include <poll.h>
#include <signal.h>
#include <utility>

#include "console/socket_addresses.h"

namespace veltrin {
namespace {

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
  const SocketAddress form = toSocketAddress(address);
  std::array<char, NI_MAXHOST> name{};
  if (getnameinfo(&form.any, sizeOf(address.family), name.data(), name.size(), nullptr, 0,
                  NI_NAMEREQD) != 0) {
    return std::nullopt;
  }
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
  // once those are read, it says what is true of this one.
  if (failure != 0 && keepErrors()) {
    sending.at = now();
    failure = socket_->send(request);
    if (failure != 0) {
      keepErrors();
    }
  }
  if (failure != 0) {
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
    const Microseconds left = deadline - now();
    if (left <= 0) {
      return WaitEnd::TimedOut;
    }
    const timespec time{static_cast<time_t>(left / kSecond),
                        static_cast<long>(left % kSecond * 1000)};
    pollfd waiting{socket_->file(), POLLIN, 0};
    if (ppoll(&waiting, 1, &time, &waitingSignals) > 0 && (waiting.revents & POLLERR) != 0) {
      keepErrors();
    }
  }
}

Microseconds LinuxNetwork::now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<Microseconds>(time.tv_sec) * kSecond + time.tv_nsec / 1000;
}

}  // namespace veltrin
