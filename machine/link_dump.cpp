// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/link_dump.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <linux/if_addr.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <optional>
#include <sys/socket.h>
#include <utility>

namespace veltrin {
namespace {

constexpr unsigned kAttributeType = NLA_TYPE_MASK;

// A plain structure from the start of some bytes, of which there may be more or fewer: what
// is not told stays 0. Newer kernels tell more, older ones less.
template <typename Structure>
Structure startOf(std::string_view bytes) {
  Structure structure{};
  std::memcpy(&structure, bytes.data(), std::min(sizeof structure, bytes.size()));
  return structure;
}

// What follows a message or an attribute of so many bytes; the next one begins at a multiple
// of four (NLMSG_ALIGN, RTA_ALIGN).
std::string_view behind(std::string_view bytes, std::size_t length) {
  return bytes.substr(std::min(bytes.size(), NLMSG_ALIGN(length)));
}

// Hands over the attributes of some bytes, up to the first that does not fit into them.
template <typename Take>
void forAttributes(std::string_view bytes, Take take) {
  while (bytes.size() >= sizeof(rtattr)) {
    const auto attribute = startOf<rtattr>(bytes);
    if (attribute.rta_len < sizeof attribute || attribute.rta_len > bytes.size()) {
      return;
    }
    take(attribute.rta_type & kAttributeType,
         bytes.substr(sizeof attribute, attribute.rta_len - sizeof attribute));
    bytes = behind(bytes, attribute.rta_len);
  }
}

std::string textOf(std::string_view content) {
  return std::string(content.substr(0, content.find('\0')));
}

std::string kindIn(std::string_view about) {
  std::string kind;
  forAttributes(about, [&](unsigned type, std::string_view content) {
    if (type == IFLA_INFO_KIND) {
      kind = textOf(content);
    }
  });
  return kind;
}

void takeFact(Link& link, unsigned type, std::string_view content) {
  switch (type) {
    case IFLA_IFNAME:
      link.name = textOf(content);
      break;
    case IFLA_LINKINFO:
      link.kind = kindIn(content);
      break;
    case IFLA_MTU:
      link.mtu = startOf<std::uint32_t>(content);
      break;
    case IFLA_ADDRESS:
      link.address = content;
      break;
    case IFLA_OPERSTATE:
      link.operState = startOf<std::uint8_t>(content);
      break;
    case IFLA_STATS64:
      link.traffic = startOf<rtnl_link_stats64>(content);
      break;
    default:
      break;
  }
}

// Nothing for other families, and for a content that is not as long as theirs.
std::optional<Address> addressOf(unsigned family, std::string_view content) {
  const bool ipv6 = family == AF_INET6;
  if ((!ipv6 && family != AF_INET) || content.size() != (ipv6 ? 16U : 4U)) {
    return std::nullopt;
  }
  Address address;
  address.family = ipv6 ? Family::IPv6 : Family::IPv4;
  std::copy(content.begin(), content.end(), address.bytes.begin());
  return address;
}

}  // namespace

LinkDump::State LinkDump::take(std::string_view datagram) {
  while (datagram.size() >= sizeof(nlmsghdr)) {
    const auto header = startOf<nlmsghdr>(datagram);
    if (header.nlmsg_len < sizeof header || header.nlmsg_len > datagram.size()) {
      return State::Failed;
    }
    const std::string_view body = datagram.substr(sizeof header, header.nlmsg_len - sizeof header);
    switch (header.nlmsg_type) {
      case NLMSG_DONE:
        return State::Done;
      case NLMSG_ERROR:
        return State::Failed;
      case RTM_NEWLINK:
        takeLink(body);
        break;
      case RTM_NEWADDR:
        takeAddress(body);
        break;
      default:
        break;
    }
    datagram = behind(datagram, header.nlmsg_len);
  }
  return State::More;
}

void LinkDump::takeLink(std::string_view body) {
  if (body.size() < sizeof(ifinfomsg)) {
    return;
  }
  const auto about = startOf<ifinfomsg>(body);
  Link link;
  link.index = static_cast<std::uint32_t>(about.ifi_index);
  link.type = about.ifi_type;
  link.flags = about.ifi_flags;
  forAttributes(behind(body, sizeof about),
                [&](unsigned type, std::string_view content) { takeFact(link, type, content); });
  if (about.ifi_index > 0 && !link.name.empty()) {
    links_.push_back(std::move(link));
  }
}

void LinkDump::takeAddress(std::string_view body) {
  if (body.size() < sizeof(ifaddrmsg)) {
    return;
  }
  const auto about = startOf<ifaddrmsg>(body);
  std::uint32_t flags = about.ifa_flags;
  std::optional<std::string_view> own;
  std::string_view any;
  forAttributes(behind(body, sizeof about), [&](unsigned type, std::string_view content) {
    if (type == IFA_LOCAL) {
      own = content;
    } else if (type == IFA_ADDRESS) {
      any = content;
    } else if (type == IFA_FLAGS && content.size() >= sizeof flags) {
      flags = startOf<std::uint32_t>(content);  // has room for flags that the byte has not
    }
  });
  // IFA_LOCAL is this machine's end of a link between two, where IFA_ADDRESS is the other one.
  if (const auto address = addressOf(about.ifa_family, own.value_or(any))) {
    addresses_.push_back({about.ifa_index, *address, flags});
  }
}

}  // namespace veltrin
