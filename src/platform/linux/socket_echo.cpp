// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/socket_echo.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <ctime>
#include <linux/errqueue.h>
#include <linux/icmp.h>
#include <netinet/in.h>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace veltrin {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using std::chrono::system_clock;

// Room for a time stamp, a hop count and the report of an error.
constexpr std::size_t kControlRoom = 256;

// The longest header of an IPv4 packet, and one byte by which a message that is longer
// than the reply shows.
constexpr std::size_t kBesidesReply = 61;

// How often an echo is tried that fails for errors about echoes of others.
constexpr int kSendTries = 8;

// A copy, as the kernel aligns these for no type in particular. Nothing when it is too short.
template <class Value>
std::optional<Value> valueOf(const cmsghdr& control) {
  Value value{};
  if (control.cmsg_len < CMSG_LEN(sizeof value)) return std::nullopt;
  std::memcpy(&value, CMSG_DATA(&control), sizeof value);
  return value;
}

void setOption(int socket, int level, int option, int value) {
  setsockopt(socket, level, option, &value, sizeof value);
}

std::uint32_t statusOfFailure(int error) {
  switch (error) {
    case ENETDOWN:
    case ENETUNREACH:
      return kIpNetUnreachable;
    case EHOSTDOWN:
    case EHOSTUNREACH:
      return kIpHostUnreachable;
    case EMSGSIZE:
      return kIpPacketTooBig;
    case ENOBUFS:
    case ENOMEM:
      return kIpNoResources;
    default:
      return kIpGeneralFailure;
  }
}

// The moment that a stamp of the calendar's clock means. An arrival lies behind its
// sending and in the past, however the calendar is set meanwhile.
steady_clock::time_point momentOf(const timespec& stamp, steady_clock::time_point sentAt) {
  const auto stamped = std::chrono::seconds(stamp.tv_sec) + std::chrono::nanoseconds(stamp.tv_nsec);
  const auto age = system_clock::now().time_since_epoch() - stamped;
  const auto now = steady_clock::now();
  return std::clamp(now - age, sentAt, now);
}

// Milliseconds of a wait that must not end before its time.
int wholeMilliseconds(steady_clock::duration span) {
  const auto whole = std::chrono::ceil<milliseconds>(span).count();
  return static_cast<int>(std::min<std::int64_t>(whole, INT_MAX));
}

}  // namespace

// What came in, with all that the kernel tells of it.
struct SocketEcho::Message {
  std::string_view bytes;
  sockaddr_in from{};
  std::optional<timespec> stamp;
  std::optional<int> ttl;
  std::optional<sock_extended_err> error;
  sockaddr_in teller{};  // who told of the error

  void take(const cmsghdr& control) {
    if (control.cmsg_level == SOL_SOCKET && control.cmsg_type == SCM_TIMESTAMPNS) {
      stamp = valueOf<timespec>(control);
    } else if (control.cmsg_level == SOL_IP && control.cmsg_type == IP_TTL) {
      ttl = valueOf<int>(control);
    } else if (control.cmsg_level == SOL_IP && control.cmsg_type == IP_RECVERR) {
      struct Report {
        sock_extended_err error;
        sockaddr_in teller;
      };
      const auto report = valueOf<Report>(control);
      if (!report) return;
      error = report->error;
      teller = report->teller;
    }
  }
};

std::unique_ptr<SocketEcho> SocketEcho::open(Kind kind, Wait wait) {
  const int type = kind == Kind::Raw ? SOCK_RAW : SOCK_DGRAM;
  const int opened = socket(AF_INET, type | SOCK_CLOEXEC, IPPROTO_ICMP);
  if (opened < 0) return nullptr;
  return std::make_unique<SocketEcho>(opened, kind, std::move(wait));
}

SocketEcho::SocketEcho(int socket, Kind kind, Wait wait)
    : socket_(socket),
      kind_(kind),
      identity_(kind == Kind::Raw ? EchoIdentity::Own : EchoIdentity::Kernels),
      wait_(std::move(wait)) {
  setOption(socket_, SOL_SOCKET, SO_TIMESTAMPNS, 1);
  setOption(socket_, SOL_IP, IP_RECVTTL, 1);
  setOption(socket_, SOL_IP, IP_RECVERR, 1);
  if (kind_ == Kind::Raw) {
    // Else all ICMP messages that reach the machine come in. Errors go past the filter.
    const icmp_filter repliesOnly{~(std::uint32_t{1} << ICMP_ECHOREPLY)};
    setsockopt(socket_, SOL_RAW, ICMP_FILTER, &repliesOnly, sizeof repliesOnly);
  }
}

SocketEcho::~SocketEcho() { close(socket_); }

bool SocketEcho::exchange(const EchoQuestion& question, ICMP_ECHO_REPLY& reply) {
  // Two programs that run at once have two process numbers.
  const auto identifier = static_cast<std::uint16_t>(getpid());
  const std::string request = echoRequest(identifier, question.sequence, question.data);
  room_.resize(request.size() + kBesidesReply);
  Moment sentAt;
  if (const int failure = send(request, question.address, sentAt); failure != 0) {
    reply.Status = statusOfFailure(failure);
    return false;
  }
  const milliseconds timeout(question.timeout);
  reply.Status = kIpTimedOut;
  for (;;) {
    // Looked at once more behind the end of the wait: the answer may have arrived in time
    // and this program have slept over it.
    Message message;
    if (readReply(request, message)) {
      const auto arrived = message.stamp ? momentOf(*message.stamp, sentAt) : steady_clock::now();
      if (arrived - sentAt > timeout) return false;
      reply.Status = kIpSuccess;
      reply.Address = message.from.sin_addr.s_addr;
      reply.RoundTripTime =
          static_cast<std::uint32_t>(std::chrono::floor<milliseconds>(arrived - sentAt).count());
      reply.Options.Ttl = static_cast<std::uint8_t>(message.ttl.value_or(0));
      return true;
    }
    if (readError(request, reply)) return false;
    const auto left = sentAt + timeout - steady_clock::now();
    if (left <= steady_clock::duration::zero()) return false;
    wait_(socket_, wholeMilliseconds(left));
  }
}

// The kernel answers a send with an error that is still to be told, which may be about
// another program's echo.
int SocketEcho::send(const std::string& request, std::uint32_t address, Moment& sentAt) const {
  sockaddr_in to{};
  to.sin_family = AF_INET;
  to.sin_addr.s_addr = address;
  int failure = 0;
  for (int attempt = 0; attempt < kSendTries; ++attempt) {
    sentAt = steady_clock::now();
    if (sendto(socket_, request.data(), request.size(), 0, reinterpret_cast<const sockaddr*>(&to),
               sizeof to) >= 0) {
      return 0;
    }
    failure = errno;
    if (failure != EINTR && !dropErrors()) break;
  }
  return failure;
}

// Whether there were any.
bool SocketEcho::dropErrors() const {
  bool any = false;
  char byte = 0;
  while (recv(socket_, &byte, sizeof byte, MSG_ERRQUEUE | MSG_DONTWAIT) >= 0) any = true;
  return any;
}

int SocketEcho::receive(int flags, Message& message) {
  alignas(cmsghdr) std::array<char, kControlRoom> control{};
  iovec part{room_.data(), room_.size()};
  msghdr header{};
  header.msg_name = &message.from;
  header.msg_namelen = sizeof message.from;
  header.msg_iov = &part;
  header.msg_iovlen = 1;
  header.msg_control = control.data();
  header.msg_controllen = control.size();
  const ssize_t size = recvmsg(socket_, &header, flags | MSG_DONTWAIT);
  if (size < 0) return errno;
  message.bytes = std::string_view(room_.data(), static_cast<std::size_t>(size));
  for (const cmsghdr* each = CMSG_FIRSTHDR(&header); each != nullptr;
       each = CMSG_NXTHDR(&header, const_cast<cmsghdr*>(each))) {
    message.take(*each);
  }
  return 0;
}

bool SocketEcho::readReply(const std::string& request, Message& message) {
  for (;;) {
    message = Message{};
    // An error about an echo ends this too; the queue of the errors tells of it.
    if (receive(0, message) != 0) return false;
    const std::string_view bytes =
        kind_ == Kind::Raw ? behindIpHeader(message.bytes) : message.bytes;
    if (answersEcho(bytes, request, identity_)) return true;
  }
}

bool SocketEcho::readError(const std::string& request, ICMP_ECHO_REPLY& reply) {
  for (;;) {
    Message message;
    if (receive(MSG_ERRQUEUE, message) != 0) return false;
    const bool told = message.error && message.error->ee_origin == SO_EE_ORIGIN_ICMP;
    if (!told || !quotesEcho(message.bytes, request, identity_)) continue;
    reply.Status = statusOfIcmpError(message.error->ee_type, message.error->ee_code);
    reply.Address = message.teller.sin_addr.s_addr;
    return true;
  }
}

}  // namespace veltrin
