// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the kernel's messages about network devices and their addresses (rtnetlink(7)).
#pragma once

#include <cstdint>
#include <linux/if_link.h>
#include <string>
#include <string_view>
#include <vector>

#include "machine/address.h"

namespace veltrin {

// A network device as the kernel tells it.
struct Link {
  std::uint32_t index = 0;
  unsigned type = 0;   // ARPHRD_... (linux/if_arp.h)
  unsigned flags = 0;  // IFF_... (net/if.h)
  std::string name;
  std::string kind;             // "bridge", "veth"; empty for one that is no software
  std::uint32_t mtu = 0;        // bytes
  std::string address;          // the bytes of its hardware address
  std::uint8_t operState = 0;   // IF_OPER_... (linux/if.h)
  rtnl_link_stats64 traffic{};  // since the device was made
};

// An address that a device has.
struct LinkAddress {
  std::uint32_t index = 0;  // the device's
  Address address;          // this end's, where the device links two
  std::uint32_t flags = 0;  // IFA_F_... (linux/if_addr.h)
};

class LinkDump {
 public:
  enum class State { More, Done, Failed };

  // Takes the messages of one datagram. Done with the last one of an answer.
  State take(std::string_view datagram);

  // What was told so far, in the kernel's order.
  const std::vector<Link>& links() const { return links_; }
  const std::vector<LinkAddress>& addresses() const { return addresses_; }

 private:
  void takeLink(std::string_view body);
  void takeAddress(std::string_view body);

  std::vector<Link> links_;
  std::vector<LinkAddress> addresses_;
};

}  // namespace veltrin
