// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/route_socket.h"

#include <cerrno>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace veltrin {
namespace {

constexpr timeval kPatience{1, 0};  // the kernel answers at once

}  // namespace

RouteSocket::RouteSocket() : socket_(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE)) {
  setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &kPatience, sizeof kPatience);
}

RouteSocket::~RouteSocket() {
  if (socket_ >= 0) {
    close(socket_);
  }
}

bool RouteSocket::ask(std::uint16_t kind, LinkDump& dump) {
  struct Request {
    nlmsghdr header;
    rtgenmsg about;
  } request{};
  request.header.nlmsg_len = NLMSG_LENGTH(sizeof(rtgenmsg));
  request.header.nlmsg_type = kind;
  request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
  request.about.rtgen_family = AF_UNSPEC;
  if (socket_ < 0 || send(socket_, &request, request.header.nlmsg_len, 0) < 0) {
    return false;
  }
  auto state = LinkDump::State::More;
  while (state == LinkDump::State::More) {
    state = takeOne(dump);
  }
  return state == LinkDump::State::Done;
}

LinkDump::State RouteSocket::takeOne(LinkDump& dump) {
  const ssize_t size = recv(socket_, bytes_.data(), bytes_.size(), MSG_TRUNC);
  if (size < 0 && errno == EINTR) {
    return LinkDump::State::More;
  }
  if (size <= 0 || static_cast<std::size_t>(size) > bytes_.size()) {
    return LinkDump::State::Failed;
  }
  return dump.take({bytes_.data(), static_cast<std::size_t>(size)});
}

std::vector<Link> networkLinks() {
  RouteSocket kernel;
  LinkDump dump;
  return kernel.ask(RTM_GETLINK, dump) ? dump.links() : std::vector<Link>();
}

}  // namespace veltrin
