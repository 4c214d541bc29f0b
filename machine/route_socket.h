// SPDX-License-Identifier: GPL-3.0-or-later
// A conversation with the kernel about its network devices (rtnetlink(7)).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "machine/link_dump.h"

namespace veltrin {

class RouteSocket {
 public:
  RouteSocket();
  ~RouteSocket();
  RouteSocket(const RouteSocket&) = delete;
  RouteSocket& operator=(const RouteSocket&) = delete;

  // Asks for all objects of a kind, which is RTM_GETLINK or RTM_GETADDR, and hands the answer
  // to a dump. False when the kernel does not give it whole, or says nothing for a second.
  bool ask(std::uint16_t kind, LinkDump& dump);

 private:
  LinkDump::State takeOne(LinkDump& dump);

  // The kernel fills no datagram of a dump further (NLMSG_GOODSIZE and max_recvmsg_len in
  // net/netlink/af_netlink.c).
  static constexpr std::size_t kLargestDatagram = 65536;

  int socket_;
  std::array<char, kLargestDatagram> bytes_{};
};

// All network devices that this process sees, in the kernel's order. Nothing when it does not
// tell.
std::vector<Link> networkLinks();

}  // namespace veltrin
