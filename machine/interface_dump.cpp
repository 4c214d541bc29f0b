#include "machine/interface_dump.h"

#include <algorithm>
#include <cstring>
#include <linux/if_addr.h>
#include <linux/if_link.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <optional>
#include <string>
#include <sys/socket.h>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// The bits of an attribute's type that name it (NLA_TYPE_MASK).
constexpr unsigned kAttributeType = 0x3FFF;

// A structure of the kernel at the start of some bytes; nothing when they are
// fewer.
template <typename Structure>
std::optional<Structure> structureAt(std::string_view bytes) {
  if (bytes.size() < sizeof(Structure)) {
    return std::nullopt;
  }
  Structure structure;
  std::memcpy(&structure, bytes.data(), sizeof structure);
  return structure;
}

std::string_view behind(std::string_view bytes, std::size_t size) {
  return bytes.substr(std::min(size, bytes.size()));
}

// Messages and attributes alike begin at multiples of four (NLMSG_ALIGN).
constexpr std::size_t aligned(std::size_t size) { return (size + 3) & ~std::size_t{3}; }

// The content of the first attribute of a type; nothing when there is none.
std::optional<std::string_view> attribute(std::string_view bytes, unsigned type) {
  while (const auto header = structureAt<rtattr>(bytes)) {
    if (header->rta_len < sizeof(rtattr) || header->rta_len > bytes.size()) {
      return std::nullopt;
    }
    if ((header->rta_type & kAttributeType) == type) {
      return bytes.substr(sizeof(rtattr), header->rta_len - sizeof(rtattr));
    }
    bytes = behind(bytes, aligned(header->rta_len));
  }
  return std::nullopt;
}

std::string textOf(std::optional<std::string_view> content) {
  return std::string(trimmed(content.value_or("")));
}

std::optional<Address> addressOf(unsigned family, std::string_view content) {
  Address address;
  const bool ipv6 = family == AF_INET6;
  address.family = ipv6 ? Family::IPv6 : Family::IPv4;
  if ((!ipv6 && family != AF_INET) || content.size() != (ipv6 ? 16U : 4U)) {
    return std::nullopt;
  }
  std::copy(content.begin(), content.end(), address.bytes.begin());
  return address;
}

}  // namespace

InterfaceDump::State InterfaceDump::take(std::string_view datagram) {
  while (const auto header = structureAt<nlmsghdr>(datagram)) {
    if (header->nlmsg_len < sizeof(nlmsghdr) || header->nlmsg_len > datagram.size()) {
      return State::Failed;
    }
    const std::string_view body =
        datagram.substr(sizeof(nlmsghdr), header->nlmsg_len - sizeof(nlmsghdr));
    switch (header->nlmsg_type) {
      case NLMSG_DONE:
        return State::Done;
      case NLMSG_ERROR:
        return State::Failed;
      case RTM_NEWLINK:
        takeInterface(body);
        break;
      case RTM_NEWADDR:
        takeAddress(body);
        break;
      default:
        break;
    }
    datagram = behind(datagram, aligned(header->nlmsg_len));
  }
  return State::More;
}

void InterfaceDump::takeInterface(std::string_view body) {
  const auto facts = structureAt<ifinfomsg>(body);
  if (!facts || facts->ifi_index <= 0 || (facts->ifi_flags & IFF_LOOPBACK) != 0) {
    return;
  }
  const std::string_view attributes = behind(body, aligned(sizeof(ifinfomsg)));
  NetworkInterface told;
  told.index = static_cast<std::uint32_t>(facts->ifi_index);
  told.name = textOf(attribute(attributes, IFLA_IFNAME));
  told.running = (facts->ifi_flags & IFF_UP) != 0 && (facts->ifi_flags & IFF_RUNNING) != 0;
  if (const auto about = attribute(attributes, IFLA_LINKINFO)) {
    told.kind = textOf(attribute(*about, IFLA_INFO_KIND));
  }
  const auto place = std::lower_bound(
      interfaces_.begin(), interfaces_.end(), told.index,
      [](const NetworkInterface& known, std::uint32_t index) { return known.index < index; });
  const bool known = place != interfaces_.end() && place->index == told.index;
  if (!told.name.empty() && !known) {
    interfaces_.insert(place, std::move(told));
  }
}

void InterfaceDump::takeAddress(std::string_view body) {
  const auto facts = structureAt<ifaddrmsg>(body);
  if (!facts) {
    return;
  }
  const std::string_view attributes = behind(body, aligned(sizeof(ifaddrmsg)));
  // IFA_LOCAL is this machine's end of a link between two, where IFA_ADDRESS is the
  // other one.
  auto content = attribute(attributes, IFA_LOCAL);
  if (!content) {
    content = attribute(attributes, IFA_ADDRESS);
  }
  const auto address = addressOf(facts->ifa_family, content.value_or(""));
  const auto owner =
      std::find_if(interfaces_.begin(), interfaces_.end(),
                   [&](const NetworkInterface& known) { return known.index == facts->ifa_index; });
  if (!address || owner == interfaces_.end()) {
    return;
  }
  const auto moreFlags = structureAt<std::uint32_t>(attribute(attributes, IFA_FLAGS).value_or(""));
  const std::uint32_t flags = moreFlags.value_or(facts->ifa_flags);
  owner->addresses.push_back({*address, (flags & IFA_F_PERMANENT) != 0});
}

}  // namespace veltrin
