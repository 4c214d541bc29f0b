// Reads the kernel's messages about network devices (rtnetlink(7)).
#pragma once

#include <cstdint>
#include <linux/if_link.h>
#include <string>
#include <string_view>
#include <vector>

namespace veltrin {

// A network device as the kernel tells it.
struct Link {
  std::uint32_t index = 0;
  unsigned type = 0;   // ARPHRD_... (linux/if_arp.h)
  unsigned flags = 0;  // IFF_... (net/if.h)
  std::string name;
  std::uint32_t mtu = 0;        // bytes
  std::string address;          // the bytes of its hardware address
  std::uint8_t operState = 0;   // IF_OPER_... (linux/if.h)
  rtnl_link_stats64 traffic{};  // since the device was made
};

class LinkDump {
 public:
  enum class State { More, Done, Failed };

  // Takes the messages of one datagram. Done with the last one of an answer.
  State take(std::string_view datagram);

  // What was told so far, in the kernel's order.
  const std::vector<Link>& links() const { return links_; }

 private:
  void takeLink(std::string_view body);

  std::vector<Link> links_;
};

// All network devices that this process sees. Nothing when the kernel does not tell.
std::vector<Link> networkLinks();

}  // namespace veltrin
