// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/sentences.h"

namespace veltrin {

std::string_view sentenceOf(IcmpError error) {
  switch (error) {
    case IcmpError::NetUnreachable:
      return "Destination net unreachable.";
    case IcmpError::HostUnreachable:
      return "Destination host unreachable.";
    case IcmpError::ProtocolUnreachable:
      return "Destination protocol unreachable.";
    case IcmpError::PortUnreachable:
      return "Destination port unreachable.";
    case IcmpError::TooBig:
      return "Packet too big.";
    case IcmpError::TtlExpired:
      return "TTL expired in transit.";
    case IcmpError::ReassemblyExpired:
      return "TTL expired during reassembly.";
    case IcmpError::BadParameter:
      return "The packet's header was refused.";
    case IcmpError::Other:
      break;
  }
  return "General failure.";
}

std::string openingProblem(OpenResult result, std::string_view tool,
                           const std::optional<Address>& source) {
  switch (result) {
    case OpenResult::Opened:
      return "";
    case OpenResult::NotAllowed:
      return std::string(tool) +
             ": this system allows no echo to this user: neither net.ipv4.ping_group_range "
             "nor the capability CAP_NET_RAW permits it.";
    case OpenResult::BadSource:
      break;
  }
  return std::string(tool) + ": cannot send from " + (source ? source->text() : std::string()) +
         ": it is not an address of this machine.";
}

}  // namespace veltrin
