#include "platform/linux/link_dump.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace veltrin {
namespace {

constexpr unsigned kAttributeType = NLA_TYPE_MASK;

// More than the kernel puts into one datagram.
constexpr std::size_t kLongestDatagram = std::size_t{64} << 10;

constexpr timeval kPatience{1, 0};  // the kernel answers at once

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

void takeAttribute(Link& link, unsigned type, std::string_view content) {
  switch (type) {
    case IFLA_IFNAME:
      link.name = content.substr(0, content.find('\0'));
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

// A socket that is closed when it goes.
class RouteSocket {
 public:
  RouteSocket() : socket_(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE)) {
    setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &kPatience, sizeof kPatience);
  }
  ~RouteSocket() {
    if (socket_ >= 0) close(socket_);
  }
  RouteSocket(const RouteSocket&) = delete;
  RouteSocket& operator=(const RouteSocket&) = delete;

  bool askForLinks() const {
    struct {
      nlmsghdr header;
      ifinfomsg about;
    } request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = RTM_GETLINK;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.about.ifi_family = AF_UNSPEC;
    return send(socket_, &request, sizeof request, 0) == sizeof request;
  }

  // The next datagram in a buffer; empty when none comes.
  std::string_view receive(std::string& buffer) const {
    const ssize_t size = recv(socket_, buffer.data(), buffer.size(), 0);
    return {buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0};
  }

 private:
  int socket_;
};

}  // namespace

LinkDump::State LinkDump::take(std::string_view datagram) {
  while (datagram.size() >= sizeof(nlmsghdr)) {
    const auto header = startOf<nlmsghdr>(datagram);
    if (header.nlmsg_len < sizeof header || header.nlmsg_len > datagram.size()) {
      return State::Failed;
    }
    if (header.nlmsg_type == NLMSG_DONE) return State::Done;
    if (header.nlmsg_type == NLMSG_ERROR) return State::Failed;
    if (header.nlmsg_type == RTM_NEWLINK) {
      takeLink(datagram.substr(sizeof header, header.nlmsg_len - sizeof header));
    }
    datagram = behind(datagram, header.nlmsg_len);
  }
  return State::More;
}

void LinkDump::takeLink(std::string_view body) {
  if (body.size() < sizeof(ifinfomsg)) return;
  const auto about = startOf<ifinfomsg>(body);
  Link link;
  link.index = static_cast<std::uint32_t>(about.ifi_index);
  link.type = about.ifi_type;
  link.flags = about.ifi_flags;
  for (body = behind(body, sizeof about); body.size() >= sizeof(rtattr);) {
    const auto attribute = startOf<rtattr>(body);
    if (attribute.rta_len < sizeof attribute || attribute.rta_len > body.size()) break;
    takeAttribute(link, attribute.rta_type & kAttributeType,
                  body.substr(sizeof attribute, attribute.rta_len - sizeof attribute));
    body = behind(body, attribute.rta_len);
  }
  if (about.ifi_index > 0 && !link.name.empty()) links_.push_back(std::move(link));
}

std::vector<Link> networkLinks() {
  const RouteSocket socket;
  if (!socket.askForLinks()) return {};
  LinkDump dump;
  std::string buffer(kLongestDatagram, '\0');
  for (;;) {
    const std::string_view datagram = socket.receive(buffer);
    if (datagram.empty()) return {};
    switch (dump.take(datagram)) {
      case LinkDump::State::More:
        break;
      case LinkDump::State::Done:
        return dump.links();
      case LinkDump::State::Failed:
        return {};
    }
  }
}

}  // namespace veltrin
