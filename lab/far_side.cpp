// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/far_side.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <sched.h>
#include <string>
#include <sys/socket.h>

#include "lab/interface.h"

namespace veltrin::lab {
namespace {

constexpr const char* kOwnNetwork = "/proc/self/ns/net";
constexpr int kMostWaiting = 64;  // clients that nobody has let in yet

// The system's form of an address and a port.
struct SystemAddress {
  sockaddr_storage bytes{};
  socklen_t length = 0;
};

SystemAddress systemAddressOf(const IpAddress& address, std::uint16_t port) {
  SystemAddress result;
  if (address.family() == Family::V4) {
    sockaddr_in v4{};
    v4.sin_family = AF_INET;
    v4.sin_port = htons(port);
    std::memcpy(&v4.sin_addr, address.bytes().data(), IpAddress::kV4Length);
    std::memcpy(&result.bytes, &v4, sizeof(v4));
    result.length = sizeof(v4);
  } else {
    sockaddr_in6 v6{};
    v6.sin6_family = AF_INET6;
    v6.sin6_port = htons(port);
    std::memcpy(&v6.sin6_addr, address.bytes().data(), IpAddress::kV6Length);
    std::memcpy(&result.bytes, &v6, sizeof(v6));
    result.length = sizeof(v6);
  }
  return result;
}

// No socket for an IPv6 address where the kernel has no IPv6.
Descriptor openDoor(const IpAddress& address, std::uint16_t port) {
  const SystemAddress place = systemAddressOf(address, port);
  Descriptor door(
      socket(place.bytes.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, IPPROTO_TCP));
  if (door.get() >= 0 &&
      bind(door.get(), reinterpret_cast<const sockaddr*>(&place.bytes), place.length) == 0 &&
      listen(door.get(), kMostWaiting) == 0) {
    return door;
  }
  const bool missing = errno == EAFNOSUPPORT || errno == EADDRNOTAVAIL;
  if (address.family() == Family::V6 && missing) return {};
  failWithErrno("cannot serve at " + address.text());
}

std::vector<MachineAddress> addressesOf(const Scenario& scenario) {
  std::vector<MachineAddress> addresses;
  for (const Node& node : scenario.nodes) {
    if (!node.web) continue;
    for (const IpAddress& address : node.addresses) {
      addresses.push_back({address, static_cast<std::uint8_t>(address.bytes().size() * 8)});
    }
  }
  return addresses;
}

}  // namespace

FarSide makeFarSide(const Scenario& scenario) {
  FarSide side;
  const std::vector<MachineAddress> addresses = addressesOf(scenario);
  if (addresses.empty()) return side;
  const Descriptor home(open(kOwnNetwork, O_RDONLY | O_CLOEXEC));
  if (home.get() < 0) failWithErrno(std::string("cannot open ") + kOwnNetwork);
  if (unshare(CLONE_NEWNET) != 0) failWithErrno("cannot make a network namespace for servers");
  side.interface = makeInterface({addresses, {}, scenario.mtu});
  for (const Node& node : scenario.nodes) {
    if (!node.web) continue;
    for (const IpAddress& address : node.addresses) {
      Descriptor door = openDoor(address, node.web->port);
      if (door.get() >= 0) side.doors.push_back({std::move(door), *node.web});
    }
  }
  if (setns(home.get(), CLONE_NEWNET) != 0) failWithErrno("cannot return from the servers");
  return side;
}

}  // namespace veltrin::lab
