// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/echo_socket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <linux/errqueue.h>
#include <linux/filter.h>
#include <linux/icmp.h>
#include <netinet/in.h>
#include <unistd.h>

#include "console/icmp.h"
#include "console/socket_addresses.h"

namespace veltrin {
namespace {

// The largest packet that IP carries.
constexpr std::size_t kPacketSpace = 65536;

// Room for time stamp, hop count, options and an error report.
constexpr std::size_t kControlSpace = 512;

Microseconds momentOf(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<Microseconds>(time.tv_sec) * kSecond + time.tv_nsec / 1000;
}

// The moment of the steady clock that a stamp of the calendar's clock means. An
// arrival lies in the past: a calendar that was set meanwhile cannot move it
// into the future.
Microseconds steadyMoment(const timespec& stamp) {
  const Microseconds arrived =
      static_cast<Microseconds>(stamp.tv_sec) * kSecond + stamp.tv_nsec / 1000;
  const Microseconds age = momentOf(CLOCK_REALTIME) - arrived;
  return momentOf(CLOCK_MONOTONIC) - std::max<Microseconds>(age, 0);
}

// One message of the socket with all that came along.
struct Message {
  SocketAddress from{};
  msghdr header{};
  ByteView bytes;
};

// Buffers of a read; one read is under way at a time.
struct ReadSpace {
  std::array<std::uint8_t, kPacketSpace> packet;
  alignas(cmsghdr) std::array<std::uint8_t, kControlSpace> control;
  iovec part;
};

ReadSpace& readSpace() {
  static ReadSpace space;
  return space;
}

// Takes one message; an errno, 0 when one was taken.
int receive(int file, int flags, Message& message) {
  ReadSpace& space = readSpace();
  space.part = {space.packet.data(), space.packet.size()};
  message.header.msg_name = &message.from;
  message.header.msg_namelen = sizeof message.from;
  message.header.msg_iov = &space.part;
  message.header.msg_iovlen = 1;
  message.header.msg_control = space.control.data();
  message.header.msg_controllen = space.control.size();
  const ssize_t size = recvmsg(file, &message.header, flags | MSG_DONTWAIT);
  if (size < 0) {
    return errno;
  }
  message.bytes = ByteView(space.packet.data(), static_cast<std::size_t>(size));
  return 0;
}

template <typename Value>
Value valueOf(const cmsghdr* control) {
  Value value{};
  std::memcpy(&value, CMSG_DATA(control), sizeof value);
  return value;
}

// Calls `take` for each piece of control data.
template <typename Take>
void eachControl(Message& message, Take take) {
  for (cmsghdr* control = CMSG_FIRSTHDR(&message.header); control != nullptr;
       control = CMSG_NXTHDR(&message.header, control)) {
    take(control);
  }
}

void takeStamp(const cmsghdr* control, Incoming& incoming) {
  if (control->cmsg_level == SOL_SOCKET && control->cmsg_type == SCM_TIMESTAMPNS) {
    incoming.at = steadyMoment(valueOf<timespec>(control));
  }
}

void takeOptions(const cmsghdr* control, Incoming& incoming) {
  const ByteView options(CMSG_DATA(control), control->cmsg_len - CMSG_LEN(0));
  incoming.route = recordedRoute(options);
  incoming.stamps = recordedTimes(options);
}

}  // namespace

bool EchoSocket::open(Family family) {
  family_ = family;
  const int domain = family == Family::IPv4 ? AF_INET : AF_INET6;
  const int protocol = family == Family::IPv4 ? int{IPPROTO_ICMP} : int{IPPROTO_ICMPV6};
  file_ = socket(domain, SOCK_DGRAM | SOCK_CLOEXEC, protocol);
  if (file_ < 0) {
    file_ = socket(domain, SOCK_RAW | SOCK_CLOEXEC, protocol);
    raw_ = file_ >= 0;
  }
  return file_ >= 0;
}

void EchoSocket::close() {
  if (file_ >= 0) {
    ::close(file_);
    file_ = -1;
  }
}

void EchoSocket::prepare() {
  setNumber(SOL_SOCKET, SO_TIMESTAMPNS, 1);
  setNumber(SOL_SOCKET, SO_BROADCAST, 1);
  if (family_ == Family::IPv4) {
    setNumber(SOL_IP, IP_RECVERR, 1);
    setNumber(SOL_IP, IP_RECVTTL, 1);
  } else {
    setNumber(SOL_IPV6, IPV6_RECVERR, 1);
    setNumber(SOL_IPV6, IPV6_RECVHOPLIMIT, 1);
  }
  if (raw_) {
    // Two tools that run at once have two process numbers.
    id_ = static_cast<std::uint16_t>(getpid());
    filterReplies();
  }
}

// A raw socket gets every ICMP message that reaches the machine. The filter lets
// echo replies with our id through; errors come by the error queue, past it.
void EchoSocket::filterReplies() const {
  const std::uint32_t id = id_;
  const std::uint16_t toIdOffset = BPF_LD | BPF_H;
  std::array<sock_filter, 7> ipv4 = {{
      BPF_STMT(BPF_LDX | BPF_B | BPF_MSH, 0),  // behind the IPv4 header
      BPF_STMT(BPF_LD | BPF_B | BPF_IND, 0),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kEchoReply4, 0, 3),
      BPF_STMT(toIdOffset | BPF_IND, 4),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, id, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, kPacketSpace),
      BPF_STMT(BPF_RET | BPF_K, 0),
  }};
  std::array<sock_filter, 6> ipv6 = {{
      BPF_STMT(BPF_LD | BPF_B | BPF_ABS, 0),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kEchoReply6, 0, 3),
      BPF_STMT(toIdOffset | BPF_ABS, 4),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, id, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, kPacketSpace),
      BPF_STMT(BPF_RET | BPF_K, 0),
  }};
  sock_fprog program{};
  program.len = family_ == Family::IPv4 ? ipv4.size() : ipv6.size();
  program.filter = family_ == Family::IPv4 ? ipv4.data() : ipv6.data();
  setsockopt(file_, SOL_SOCKET, SO_ATTACH_FILTER, &program, sizeof program);
}

bool EchoSocket::bindTo(const Address& source) {
  const SocketAddress form = toSocketAddress(source);
  return bind(file_, &form.any, sizeOf(source.family)) == 0;
}

void EchoSocket::setNumber(int level, int option, int value) const {
  setsockopt(file_, level, option, &value, sizeof value);
}

void EchoSocket::setOptions(const Bytes& options) const {
  setsockopt(file_, SOL_IP, IP_OPTIONS, options.data(), static_cast<socklen_t>(options.size()));
}

// Sets only what differs from the echo before. A hop limit or type of service of
// 0 was never asked for before a first echo, so the system's own stays.
void EchoSocket::applySettings(const EchoRequest& request) {
  const EchoRequest before = applied_.value_or(EchoRequest{});
  if (request.priority != before.priority) {
    setNumber(SOL_SOCKET, SO_PRIORITY, request.priority);
  }
  if (request.ttl != before.ttl) {
    const int ttl = request.ttl == 0 ? -1 : request.ttl;
    if (family_ == Family::IPv4) {
      setNumber(SOL_IP, IP_TTL, ttl);
      setNumber(SOL_IP, IP_MULTICAST_TTL, ttl);
    } else {
      setNumber(SOL_IPV6, IPV6_UNICAST_HOPS, ttl);
      setNumber(SOL_IPV6, IPV6_MULTICAST_HOPS, ttl);
    }
  }
  if (family_ == Family::IPv4) {
    if (request.tos != before.tos) {
      setNumber(SOL_IP, IP_TOS, request.tos);
    }
    if (!applied_ || request.dontFragment != before.dontFragment) {
      // Probing ignores the path sizes that the kernel remembers: each echo tells
      // what the path passes now.
      setNumber(SOL_IP, IP_MTU_DISCOVER,
                request.dontFragment ? IP_PMTUDISC_PROBE : IP_PMTUDISC_DONT);
    }
    if (request.routeSlots != before.routeSlots || request.stampSlots != before.stampSlots) {
      setOptions(buildOptions(request.routeSlots, request.stampSlots));
      setNumber(SOL_IP, IP_RECVOPTS, 1);
    }
    if (request.through != before.through) {
      setOptions(buildSourceRoute(request.through));
    }
  }
  applied_ = request;
}

int EchoSocket::send(const EchoRequest& request) {
  applySettings(request);
  Bytes message = buildEchoRequest(family_, id_, request.sequence, request.size);
  if (request.oneFlow) {
    evenOut(family_, message);
  }
  const SocketAddress to = toSocketAddress(request.destination);
  const ssize_t sent =
      sendto(file_, message.data(), message.size(), 0, &to.any, sizeOf(request.destination.family));
  return sent < 0 ? errno : 0;
}

EchoSocket::Reading EchoSocket::readReply(Incoming& incoming) {
  Message message;
  const int failure = receive(file_, 0, message);
  if (failure != 0) {
    return failure == EAGAIN || failure == EINTR ? Reading::Nothing : Reading::Error;
  }
  ByteView bytes = message.bytes;
  if (raw_ && family_ == Family::IPv4) {
    const std::optional<ByteView> behindHeader = ipv4Payload(bytes);
    // The kernel hands a raw socket a message whose checksum it has not looked at.
    if (!behindHeader || internetChecksum(*behindHeader) != 0) {
      return Reading::Ignored;
    }
    bytes = *behindHeader;
  }
  const std::optional<EchoMessage> echo = parseEcho(family_, bytes);
  const std::optional<Address> from =
      fromSocketAddress(&message.from.any, message.header.msg_namelen);
  if (!echo || !echo->reply || !isOurs(*echo) || !from) {
    return Reading::Ignored;
  }
  incoming = Incoming{};
  incoming.at = momentOf(CLOCK_MONOTONIC);
  incoming.sequence = echo->sequence;
  incoming.size = echo->size;
  incoming.from = *from;
  eachControl(message, [&](const cmsghdr* control) {
    takeStamp(control, incoming);
    const bool hops = (control->cmsg_level == SOL_IP && control->cmsg_type == IP_TTL) ||
                      (control->cmsg_level == SOL_IPV6 && control->cmsg_type == IPV6_HOPLIMIT);
    if (hops) {
      incoming.ttl = valueOf<int>(control);
    }
    if (control->cmsg_level == SOL_IP && control->cmsg_type == IP_RECVOPTS) {
      takeOptions(control, incoming);
    }
  });
  return Reading::Taken;
}

// The error queue holds the head of the echo that an error is about, and beside
// it the error's type, code and sender.
EchoSocket::Reading EchoSocket::readError(Incoming& incoming) {
  Message message;
  if (receive(file_, MSG_ERRQUEUE, message) != 0) {
    return Reading::Nothing;
  }
  const std::optional<EchoMessage> echo = parseEcho(family_, message.bytes);
  if (!echo || echo->reply || !isOurs(*echo)) {
    return Reading::Ignored;
  }
  incoming = Incoming{};
  incoming.at = momentOf(CLOCK_MONOTONIC);
  incoming.sequence = echo->sequence;
  bool reported = false;
  eachControl(message, [&](const cmsghdr* control) {
    takeStamp(control, incoming);
    const bool report = (control->cmsg_level == SOL_IP && control->cmsg_type == IP_RECVERR) ||
                        (control->cmsg_level == SOL_IPV6 && control->cmsg_type == IPV6_RECVERR);
    if (!report || control->cmsg_len < CMSG_LEN(sizeof(sock_extended_err))) {
      return;
    }
    const auto error = valueOf<sock_extended_err>(control);
    // A failure on this machine was told by the send itself.
    reported = error.ee_origin == SO_EE_ORIGIN_ICMP || error.ee_origin == SO_EE_ORIGIN_ICMP6;
    incoming.error = errorOf(family_, error.ee_type, error.ee_code);
    const auto* offender = reinterpret_cast<const sockaddr*>(CMSG_DATA(control) + sizeof error);
    const std::size_t room = control->cmsg_len - CMSG_LEN(sizeof error);
    incoming.from = fromSocketAddress(offender, room).value_or(Address{});
  });
  return reported ? Reading::Taken : Reading::Ignored;
}

}  // namespace veltrin
