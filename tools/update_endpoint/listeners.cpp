// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/listeners.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <utility>

namespace veltrin::endpoint {
namespace {

// What the kernel may keep of bytes that a caller sent and nobody read yet, for each
// caller. It takes no less than about 2 KB and doubles what it is given (socket(7)).
constexpr int kReceiveBuffer = 4096;

struct KernelAddress {
  sockaddr_storage storage{};
  socklen_t length = 0;
};

KernelAddress kernelAddressOf(const Address& address, std::uint16_t port) {
  KernelAddress result;
  const auto bytes = address.bytes();
  if (address.isV6()) {
    sockaddr_in6 whole{};
    whole.sin6_family = AF_INET6;
    whole.sin6_port = htons(port);
    std::memcpy(&whole.sin6_addr, bytes.data(), bytes.size());
    std::memcpy(&result.storage, &whole, sizeof(whole));
    result.length = sizeof(whole);
  } else {
    sockaddr_in whole{};
    whole.sin_family = AF_INET;
    whole.sin_port = htons(port);
    std::memcpy(&whole.sin_addr, bytes.data(), bytes.size());
    std::memcpy(&result.storage, &whole, sizeof(whole));
    result.length = sizeof(whole);
  }
  return result;
}

// 203.0.113.1:31112, or [2001:db8::1]:31112.
std::string joined(const Address& address, std::uint16_t port) {
  const std::string text = address.isV6() ? "[" + address.text() + "]" : address.text();
  return text + ":" + std::to_string(port);
}

bool setNumber(int socket, int level, int option, int value) {
  return setsockopt(socket, level, option, &value, sizeof(value)) == 0;
}

int numberOf(int socket, int option) {
  int value = -1;
  socklen_t length = sizeof(value);
  return getsockopt(socket, SOL_SOCKET, option, &value, &length) == 0 ? value : -1;
}

// Connections inherit this from the socket that they arrived on.
void boundMemory(int socket) {
  if (!setNumber(socket, SOL_SOCKET, SO_RCVBUF, kReceiveBuffer)) {
    failWithErrno("The receive buffer cannot be bounded");
  }
}

Listener openListener(const Address& address, std::uint16_t port, bool onlyV6) {
  const std::string what = "Cannot listen on " + joined(address, port);
  const int family = address.isV6() ? AF_INET6 : AF_INET;
  Descriptor socket = opened(::socket(family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0), what);
  // Connections of a server that ended a moment ago do not keep the port from this one.
  const bool set =
      setNumber(socket.get(), SOL_SOCKET, SO_REUSEADDR, 1) &&
      (family != AF_INET6 || setNumber(socket.get(), IPPROTO_IPV6, IPV6_V6ONLY, onlyV6 ? 1 : 0));
  if (!set) failWithErrno(what);
  boundMemory(socket.get());
  const KernelAddress place = kernelAddressOf(address, port);
  const auto* const pointer = reinterpret_cast<const sockaddr*>(&place.storage);
  if (bind(socket.get(), pointer, place.length) != 0 || listen(socket.get(), kBacklog) != 0) {
    failWithErrno(what);
  }
  return {std::move(socket), false};
}

// Whether this machine speaks version 6 at all. Nothing is bound for the question: where
// binding is allowed for certain ports only, it would be refused.
bool hasV6() {
  const Descriptor socket(::socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0));
  return socket.get() >= 0;
}

bool isListener(int socket) {
  const int family = numberOf(socket, SO_DOMAIN);
  return (family == AF_INET || family == AF_INET6) && numberOf(socket, SO_TYPE) == SOCK_STREAM &&
         numberOf(socket, SO_PROTOCOL) == IPPROTO_TCP && numberOf(socket, SO_ACCEPTCONN) == 1;
}

}  // namespace

std::vector<Listener> openListeners(const std::vector<Address>& addresses,
                                    const std::vector<std::uint16_t>& ports) {
  std::vector<Address> places = addresses;
  if (places.empty()) places.push_back(*Address::parse(hasV6() ? "::" : "0.0.0.0"));
  const bool onlyV6 =
      std::any_of(places.begin(), places.end(), [](const Address& place) { return !place.isV6(); });
  std::vector<Listener> listeners;
  for (const Address& place : places) {
    for (const std::uint16_t port : ports) {
      listeners.push_back(openListener(place, port, onlyV6));
    }
  }
  return listeners;
}

std::vector<Listener> adoptListeners(std::vector<Descriptor> sockets) {
  std::vector<Listener> listeners;
  for (Descriptor& socket : sockets) {
    const std::string name = "Descriptor " + std::to_string(socket.get());
    if (!isListener(socket.get())) {
      throw CannotServe(name + " of the service manager is no listening TCP socket");
    }
    const int flags = fcntl(socket.get(), F_GETFL);
    if (flags < 0 || fcntl(socket.get(), F_SETFL, flags | O_NONBLOCK) != 0) failWithErrno(name);
    boundMemory(socket.get());
    listeners.push_back({std::move(socket), true});
  }
  return listeners;
}

std::string nameOf(const Listener& listener) {
  sockaddr_storage storage{};
  socklen_t length = sizeof(storage);
  if (getsockname(listener.socket.get(), reinterpret_cast<sockaddr*>(&storage), &length) != 0) {
    failWithErrno("A listening socket has no name");
  }
  in_port_t port = 0;  // at the same place for both versions, right behind the family
  std::memcpy(&port, reinterpret_cast<const char*>(&storage) + offsetof(sockaddr_in, sin_port),
              sizeof(port));
  return joined(addressIn(storage), ntohs(port));
}

Address addressIn(const sockaddr_storage& address) {
  std::array<std::uint8_t, Address::kV6Length> bytes{};
  const bool isV6 = address.ss_family == AF_INET6;
  const std::size_t length = isV6 ? Address::kV6Length : Address::kV4Length;
  const std::size_t at = isV6 ? offsetof(sockaddr_in6, sin6_addr) : offsetof(sockaddr_in, sin_addr);
  std::memcpy(bytes.data(), reinterpret_cast<const char*>(&address) + at, length);
  return Address(std::span(bytes).first(length));
}

}  // namespace veltrin::endpoint
