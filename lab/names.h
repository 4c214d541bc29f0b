// The names of the simulated Internet: a small DNS server without a socket.
#pragma once

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

  // The answer to a message that came in, in the form in which UDP carries both.
  // A name nobody added gets NXDOMAIN; a known name without a record of the
  // asked type gets an empty answer. Empty bytes when no answer is due: no whole
  // header, or an answer itself.
  Packet answer(Bytes query) const;

 private:
  struct Question;

  void addRecords(const Question& question, Packet& reply) const;

  std::map<std::string, std::vector<IpAddress>, std::less<>> addresses_;
  std::map<std::string, std::string, std::less<>> reverse_;
};

}  // namespace veltrin::lab
