// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/host_addresses.h"

#include <algorithm>
#include <array>

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#endif

namespace veltrin {
namespace {

// Windows wants to be told before the first name is asked for, and after the last.
#ifdef _WIN32
bool beginUse() {
  WSADATA data{};
  return WSAStartup(MAKEWORD(2, 2), &data) == 0;
}

void endUse() { WSACleanup(); }
#else
bool beginUse() { return true; }

void endUse() {}
#endif

class NetworkUse {
 public:
  NetworkUse() : begun_(beginUse()) {}
  ~NetworkUse() {
    if (begun_) endUse();
  }
  NetworkUse(const NetworkUse&) = delete;
  NetworkUse& operator=(const NetworkUse&) = delete;

 private:
  bool begun_;
};

// Longest address in numbers: 45 letters of IPv6 (RFC 4291), a zone and a NUL.
constexpr std::size_t kLongestAddress = 128;

}  // namespace

std::vector<std::string> addressesOf(const std::string& host) {
  const NetworkUse network;
  addrinfo wanted{};
  wanted.ai_family = AF_UNSPEC;
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  std::vector<std::string> addresses;
  if (getaddrinfo(host.c_str(), nullptr, &wanted, &found) != 0) return addresses;
  for (const addrinfo* entry = found; entry != nullptr; entry = entry->ai_next) {
    std::array<char, kLongestAddress> text{};
    const int failed = getnameinfo(entry->ai_addr, entry->ai_addrlen, text.data(), text.size(),
                                   nullptr, 0, NI_NUMERICHOST);
    const bool fresh =
        std::find(addresses.begin(), addresses.end(), text.data()) == addresses.end();
    if (failed == 0 && fresh) addresses.emplace_back(text.data());
  }
  freeaddrinfo(found);
  return addresses;
}

}  // namespace veltrin
