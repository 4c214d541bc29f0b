// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/server.h"

#include <algorithm>
#include <cerrno>
#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <utility>

#include "tools/update_endpoint/accept_failure.h"
#include "tools/update_endpoint/dialogue.h"

namespace veltrin::endpoint {
namespace {

// Marks of events: the number of a caller, or this bit and the number of a listener.
constexpr std::uint64_t kListenerMark = std::uint64_t{1} << 63;
constexpr std::uint64_t kEndMark = UINT64_MAX;

// Callers accepted from one listener before the others have their turn.
constexpr int kAcceptsAtATime = 64;

// Bytes of a caller that are read away at a time.
constexpr std::size_t kPiece = 4096;

// Makes the close of a socket a reset: nothing is sent any more, nothing is kept.
void closeAbruptly(const Descriptor& socket) {
  const linger abrupt{1, 0};
  setsockopt(socket.get(), SOL_SOCKET, SO_LINGER, &abrupt, sizeof(abrupt));
}

// Whether the other side has confirmed all that was sent, the end included.
bool isConfirmed(const Descriptor& socket) {
  int waiting = 0;
  return ioctl(socket.get(), SIOCOUTQ, &waiting) == 0 && waiting == 0;
}

}  // namespace

Server::Server(std::string version, const Limits& limits, std::vector<Listener> listeners,
               Descriptor endSignals)
    : version_(std::move(version)),
      book_(limits),
      listeners_(std::move(listeners)),
      endSignals_(std::move(endSignals)),
      epoll_(opened(epoll_create1(EPOLL_CLOEXEC), "Events cannot be waited for")) {
  watch(endSignals_.get(), EPOLLIN, kEndMark);
  for (std::size_t at = 0; at < listeners_.size(); ++at) {
    watch(listeners_[at].socket.get(), EPOLLIN, kListenerMark | at);
  }
}

void Server::run() {
  while (!ends_) {
    Events events;
    const int count = takeEvents(events, millisecondsToWait());
    // Callers first: who has gone makes room for who comes.
    for (int at = 0; at < count; ++at) handleCaller(events[at]);
    letOverdueGo();
    endRest();
    for (int at = 0; at < count; ++at) handleListener(events[at]);
  }
  answerTheLast();
}

void Server::watch(int descriptor, std::uint32_t events, std::uint64_t mark) {
  epoll_event event{};
  event.events = events;
  event.data.u64 = mark;
  if (epoll_ctl(epoll_.get(), EPOLL_CTL_ADD, descriptor, &event) != 0) {
    failWithErrno("A socket cannot be watched");
  }
}

// Waits so long, -1 for ever, and notes what time it is then.
int Server::takeEvents(Events& events, int milliseconds) {
  const int count = epoll_wait(epoll_.get(), events.data(), static_cast<int>(kBatch), milliseconds);
  if (count < 0 && errno != EINTR) failWithErrno("Events cannot be waited for");
  now_ = std::chrono::steady_clock::now();
  return std::max(count, 0);
}

int Server::millisecondsToWait() const {
  auto next = book_.nextDue();
  if (rests_) next = std::min(next.value_or(restsUntil_), restsUntil_);
  if (!next) return -1;
  const auto left =
      std::chrono::ceil<std::chrono::milliseconds>(*next - std::chrono::steady_clock::now());
  return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

void Server::handleCaller(const epoll_event& event) {
  if ((event.data.u64 & kListenerMark) != 0) return;
  const CallerId caller = CallerId::unpacked(event.data.u64);
  if (book_.holds(caller)) read(caller);
}

void Server::handleListener(const epoll_event& event) {
  if (event.data.u64 == kEndMark) {
    ends_ = true;
  } else if ((event.data.u64 & kListenerMark) != 0 && !rests_) {
    acceptSome(listeners_[event.data.u64 & ~kListenerMark]);
  }
}

// Whether somebody may still wait there.
bool Server::acceptSome(const Listener& listener) {
  for (int taken = 0; taken < kAcceptsAtATime; ++taken) {
    sockaddr_storage from{};
    socklen_t length = sizeof(from);
    Descriptor socket(accept4(listener.socket.get(), reinterpret_cast<sockaddr*>(&from), &length,
                              SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (socket.get() >= 0) {
      welcome(std::move(socket), addressIn(from));
      continue;
    }
    switch (acceptFailureOf(errno)) {
      case AcceptFailure::NobodyWaits:
        return false;
      case AcceptFailure::CallerIsGone:
        break;
      case AcceptFailure::NothingLeft:
        if (!makeRoom()) {
          rest();
          return false;
        }
        break;
      case AcceptFailure::Broken:
        failWithErrno("A listening socket failed");
    }
  }
  return true;
}

void Server::welcome(Descriptor socket, const Address& address) {
  if (!book_.hasRoomFor(address)) {
    lookAtCallers();
    if (!book_.hasRoomFor(address)) return closeAbruptly(socket);
  }
  const std::string answer = answerTo(address, version_);
  // The buffer of a new connection is empty, so all of it goes at once or not at all.
  const ssize_t sent = send(socket.get(), answer.data(), answer.size(), MSG_NOSIGNAL);
  if (sent != static_cast<ssize_t>(answer.size())) return;
  if (shutdown(socket.get(), SHUT_WR) != 0) return;
  if (book_.isFull()) makeRoom();
  enter(std::move(socket), address);
}

void Server::enter(Descriptor socket, const Address& address) {
  const CallerId caller = book_.add(address, now_);
  if (caller.slot >= sockets_.size()) sockets_.resize(caller.slot + std::size_t{1});
  sockets_[caller.slot] = std::move(socket);
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.u64 = caller.packed();
  const int descriptor = sockets_[caller.slot].get();
  // One who cannot be watched was answered all the same.
  if (epoll_ctl(epoll_.get(), EPOLL_CTL_ADD, descriptor, &event) != 0) letGo(caller);
}

// Something came from a caller: bytes, its end, or a failure, and all are read alike.
void Server::read(CallerId caller) {
  std::array<char, kPiece> piece;
  const ssize_t length = recv(sockets_[caller.slot].get(), piece.data(), piece.size(), 0);
  if (length > 0) {
    if (book_.drained(caller, static_cast<std::size_t>(length))) stopReading(caller);
  } else if (length == 0 || (errno != EAGAIN && errno != EINTR)) {
    letGo(caller);
  }
}

// What more the caller sends fills the kernel's small buffer, and then the caller has
// to wait. Its end and its failure are still told.
void Server::stopReading(CallerId caller) {
  epoll_event event{};
  event.data.u64 = caller.packed();
  if (epoll_ctl(epoll_.get(), EPOLL_CTL_MOD, sockets_[caller.slot].get(), &event) != 0) {
    letGo(caller);
  }
}

// Notices, before somebody is turned away or let go, who has gone in the meantime. The
// kernel hands events out in turns, so about one look for each caller is enough.
void Server::lookAtCallers() {
  Events events;
  const std::size_t most = book_.size() / kBatch + 1;
  for (std::size_t look = 0; look < most; ++look) {
    const int count = takeEvents(events, 0);
    for (int at = 0; at < count; ++at) handleCaller(events[at]);
    if (count < static_cast<int>(kBatch)) return;
  }
}

// False when there was nobody to let go.
bool Server::makeRoom() {
  const std::size_t before = book_.size();
  lookAtCallers();
  if (book_.size() < before) return true;
  const auto oldest = book_.oldest();
  if (oldest) letGo(*oldest);
  return oldest.has_value();
}

void Server::letGo(CallerId caller) {
  book_.remove(caller);
  sockets_[caller.slot].reset();
}

void Server::letOverdueGo() {
  while (const auto caller = book_.overdue(now_)) {
    // One who has not confirmed the answer by now is not there any more. The kernel
    // would go on for minutes to send it.
    const Descriptor& socket = sockets_[caller->slot];
    if (!isConfirmed(socket)) closeAbruptly(socket);
    letGo(*caller);
  }
}

// Somebody waits and cannot be accepted, so that without a rest the listener would be
// ready again at once, and again.
void Server::rest() {
  rests_ = true;
  restsUntil_ = now_ + kRest;
  armListeners(false);
}

void Server::endRest() {
  if (!rests_ || now_ < restsUntil_) return;
  rests_ = false;
  armListeners(true);
}

void Server::armListeners(bool armed) {
  for (std::size_t at = 0; at < listeners_.size(); ++at) {
    epoll_event event{};
    event.events = armed ? std::uint32_t{EPOLLIN} : 0U;
    event.data.u64 = kListenerMark | at;
    if (epoll_ctl(epoll_.get(), EPOLL_CTL_MOD, listeners_[at].socket.get(), &event) != 0) {
      failWithErrno("A listening socket cannot be watched");
    }
  }
}

void Server::answerTheLast() {
  for (const Listener& listener : listeners_) {
    if (listener.handedOver) continue;
    // Those who come while the last are answered must not keep the server for ever.
    for (int turn = 0; turn < kBacklog / kAcceptsAtATime; ++turn) {
      if (!acceptSome(listener)) break;
    }
  }
}

}  // namespace veltrin::endpoint
