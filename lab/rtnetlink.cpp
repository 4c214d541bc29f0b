// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/rtnetlink.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <span>
#include <string>
#include <sys/socket.h>
#include <vector>

namespace veltrin::lab {
namespace {

// Room for one answer of the kernel; acknowledgements are far shorter.
constexpr std::size_t kAnswerLength = 4096;

unsigned char systemFamily(Family family) { return family == Family::V4 ? AF_INET : AF_INET6; }

template <typename Value>
std::span<const std::uint8_t> bytesOf(const Value& value) {
  return {reinterpret_cast<const std::uint8_t*>(&value), sizeof(value)};
}

}  // namespace

// One request: a header, a fixed body and attributes.
class Rtnetlink::Request {
 public:
  template <typename Body>
  Request(std::uint16_t type, std::uint16_t flags, const Body& body) {
    header_.nlmsg_type = type;
    header_.nlmsg_flags = static_cast<std::uint16_t>(NLM_F_REQUEST | NLM_F_ACK | flags);
    append(bytesOf(header_));
    append(bytesOf(body));
  }

  void attribute(std::uint16_t type, std::span<const std::uint8_t> value) {
    rtattr attribute{};
    attribute.rta_type = type;
    attribute.rta_len = static_cast<std::uint16_t>(RTA_LENGTH(value.size()));
    append(bytesOf(attribute));
    append(value);
  }

  // The message with its length filled in.
  std::span<const std::uint8_t> bytes() {
    header_.nlmsg_len = static_cast<std::uint32_t>(bytes_.size());
    std::memcpy(bytes_.data(), &header_, sizeof(header_));
    return bytes_;
  }

 private:
  // Each part begins at a multiple of four bytes.
  void append(std::span<const std::uint8_t> part) {
    bytes_.insert(bytes_.end(), part.begin(), part.end());
    bytes_.resize(NLMSG_ALIGN(bytes_.size()));
  }

  nlmsghdr header_{};
  std::vector<std::uint8_t> bytes_;
};

Rtnetlink::Rtnetlink() : socket_(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE)) {
  if (socket_.get() < 0) failWithErrno("cannot open a netlink socket");
}

void Rtnetlink::bringUp(unsigned interface, std::optional<std::uint32_t> mtu) {
  ifinfomsg body{};
  body.ifi_family = AF_UNSPEC;
  body.ifi_index = static_cast<int>(interface);
  body.ifi_flags = IFF_UP;
  body.ifi_change = IFF_UP;
  Request request(RTM_NEWLINK, 0, body);
  if (mtu) request.attribute(IFLA_MTU, bytesOf(*mtu));
  send(request, "cannot bring a network interface up");
}

void Rtnetlink::addAddress(unsigned interface, const IpAddress& address,
                           std::uint8_t prefixLength) {
  ifaddrmsg body{};
  body.ifa_family = systemFamily(address.family());
  body.ifa_prefixlen = prefixLength;
  body.ifa_flags = address.family() == Family::V6 ? IFA_F_NODAD : 0;
  body.ifa_index = interface;
  Request request(RTM_NEWADDR, NLM_F_CREATE | NLM_F_EXCL, body);
  request.attribute(IFA_LOCAL, address.bytes());
  request.attribute(IFA_ADDRESS, address.bytes());
  send(request, "cannot set an address");
}

void Rtnetlink::addDefaultRoute(unsigned interface, Family family,
                                std::optional<IpAddress> gateway) {
  rtmsg body{};
  body.rtm_family = systemFamily(family);
  body.rtm_table = RT_TABLE_MAIN;
  body.rtm_protocol = RTPROT_STATIC;
  body.rtm_scope = gateway || family == Family::V6 ? RT_SCOPE_UNIVERSE : RT_SCOPE_LINK;
  body.rtm_type = RTN_UNICAST;
  Request request(RTM_NEWROUTE, NLM_F_CREATE | NLM_F_EXCL, body);
  request.attribute(RTA_OIF, bytesOf(interface));
  if (gateway) request.attribute(RTA_GATEWAY, gateway->bytes());
  send(request, "cannot set a default route");
}

void Rtnetlink::send(Request& request, const char* purpose) {
  const auto message = request.bytes();
  if (::send(socket_.get(), message.data(), message.size(), 0) < 0) failWithErrno(purpose);
  std::array<std::uint8_t, kAnswerLength> answer{};
  const ssize_t length = recv(socket_.get(), answer.data(), answer.size(), 0);
  if (length < 0) failWithErrno(purpose);
  nlmsghdr header{};
  nlmsgerr verdict{};
  if (static_cast<std::size_t>(length) < sizeof(header) + sizeof(verdict)) {
    throw CannotRun(std::string(purpose) + ": the kernel's answer is too short");
  }
  std::memcpy(&header, answer.data(), sizeof(header));
  std::memcpy(&verdict, answer.data() + NLMSG_HDRLEN, sizeof(verdict));
  if (header.nlmsg_type != NLMSG_ERROR) {
    throw CannotRun(std::string(purpose) + ": the kernel's answer is of another kind");
  }
  errno = -verdict.error;
  if (verdict.error != 0) failWithErrno(purpose);
}

}  // namespace veltrin::lab
