// SPDX-License-Identifier: GPL-3.0-or-later
// The names of the simulated Internet: a small DNS server without a socket.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "lab/address.h"
#include "lab/packet.h"

namespace veltrin::lab {

// Knows the addresses of names and the names of addresses, and answers DNS
// messages about them (RFC 1035; AAAA records RFC 3596).
class Names {
 public:
  // Adds a name, in any case, with its addresses, each of which leads back to
  // the name.
  void add(std::string_view name, std::span<const IpAddress> addresses);

  // Adds the addresses of a host that answers for the Internet outside. Each new
  // name from there (see isPublic) becomes known when it is first asked for, with
  // the addresses of the next of these hosts in turn; of at most kMostPublicNames. A name
  // that begins with "ipv4." has no IPv6 address, unless its host has no other.
  void addPublicHost(std::span<const IpAddress> addresses);

  // The answer to a message that came in, in the form in which UDP carries both.
  // A name nobody knows gets NXDOMAIN; a known name without a record of the
  // asked type gets an empty answer. Empty bytes when no answer is due: no whole
  // header, or an answer itself.
  Packet answer(Bytes query);

  // More than a person and his programs ask for in a day.
  static constexpr std::size_t kMostPublicNames = 10'000;

  // Whether a name in lower case may be one of the Internet outside: it has a dot,
  // and does not end in a label that is set aside for other uses (RFC 6761, RFC
  // 6762 section 3, RFC 3172).
  static bool isPublic(std::string_view name);

 private:
  struct Question;

  static std::vector<IpAddress> addressesFor(std::string_view name,
                                             const std::vector<IpAddress>& host);
  bool isKnown(const std::string& name);
  void addRecords(const Question& question, Packet& reply) const;

  std::map<std::string, std::vector<IpAddress>, std::less<>> addresses_;
  std::map<std::string, std::string, std::less<>> reverse_;
  std::vector<std::vector<IpAddress>> publicHosts_;
  std::size_t publicNames_ = 0;  // how many were given to the hosts
};

}  // namespace veltrin::lab
