#include "lab/internet.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "text/strings.h"

namespace veltrin::lab {
namespace {

// Hop limit of a new packet (the default that RFC 1700 gives).
constexpr std::uint8_t kFirstHopLimit = 64;

constexpr std::uint16_t kDnsPort = 53;

// How many requests in pieces are remembered at a time.
constexpr std::size_t kMostPieces = 64;

// A number that depends on every letter of a name (FNV-1a), so that each node
// has chances of its own.
std::uint64_t hashOf(std::string_view name) {
  std::uint64_t hash = 0xCBF29CE484222325ULL;
  for (const char letter : name) {
    hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001B3ULL;
  }
  return hash;
}

// From 0 to just below 1. Unlike the library's distributions, the same on every
// system.
double drawFraction(std::mt19937_64& chance) {
  return static_cast<double>(chance() >> 11) * 0x1.0p-53;
}

// The hop limit with which a packet arrives that passed some routers.
std::uint8_t hopLimitAfter(std::size_t routers) {
  return static_cast<std::uint8_t>(kFirstHopLimit -
                                   std::min<std::size_t>(routers, kFirstHopLimit - 1));
}

// Errors answer only what cannot itself be an error (RFC 1122 section 3.2.2).
bool mayCauseError(const IpPacket& packet) {
  const bool icmp = packet.protocol == kProtocolIcmp || packet.protocol == kProtocolIcmpV6;
  return packet.fragmentOffset == 0 && (!icmp || isEchoRequest(packet));
}

}  // namespace

Internet::Internet(Scenario scenario) : scenario_(std::move(scenario)) {
  dns_.insert(scenario_.dns.begin(), scenario_.dns.end());
  for (std::size_t node = 0; node < scenario_.nodes.size(); ++node) {
    const Node& described = scenario_.nodes[node];
    for (const IpAddress& address : described.addresses) byAddress_[address] = node;
    if (!described.nameless) names_.add(described.name, described.addresses);
    NodeState state;
    state.chance.seed(scenario_.seed ^ hashOf(LCase(described.name)));
    states_.push_back(state);
  }
}

std::vector<TimedPacket> Internet::receive(Time now, Bytes bytes) {
  const auto packet = readIp(bytes);
  if (!packet) return {};

  std::optional<TimedPacket> answer;
  const auto known = byAddress_.find(packet->destination);
  if (dns_.contains(packet->destination) && isUdp(*packet) &&
      udpDestinationPort(*packet) == kDnsPort) {
    answer = answerName(now, *packet);
  } else if (known != byAddress_.end()) {
    const auto& via = scenario_.nodes[known->second].via;
    if (packet->hopsLeft == 0) return {};
    answer = packet->hopsLeft <= via.size() ? atRouter(via[packet->hopsLeft - 1U], now, *packet)
                                            : atHost(known->second, now, *packet);
  }
  if (!answer) return {};
  return {std::move(*answer)};
}

Internet::Fate Internet::drawFate(std::size_t node, Time now) {
  const Node& described = scenario_.nodes[node];
  NodeState& state = states_[node];
  ++state.answers;
  // Both are drawn whatever the node is like, so that a change of its loss
  // leaves its jitter as it was.
  const double loss = drawFraction(state.chance);
  const double jitter = drawFraction(state.chance) * 2 - 1;
  if (described.silent || loss < described.loss) return std::nullopt;
  if (described.loseEvery != 0 && state.answers % described.loseEvery == 0) return std::nullopt;
  const double shift = jitter * static_cast<double>(described.jitter.count());
  return now + described.delay + Time(static_cast<Time::rep>(shift));
}

std::optional<TimedPacket> Internet::atRouter(std::size_t router, Time now,
                                              const IpPacket& packet) {
  if (!mayCauseError(packet)) return std::nullopt;
  const Node& described = scenario_.nodes[router];
  const auto own =
      std::find_if(described.addresses.begin(), described.addresses.end(),
                   [&](const IpAddress& address) { return address.family() == packet.family(); });
  if (own == described.addresses.end()) return std::nullopt;
  const Fate fate = drawFate(router, now);
  if (!fate) return std::nullopt;
  return TimedPacket{*fate, icmpError(IcmpError::TimeExceeded, packet, *own, 1,
                                      hopLimitAfter(packet.hopsLeft - 1U))};
}

std::optional<TimedPacket> Internet::atHost(std::size_t host, Time now, const IpPacket& packet) {
  if (isEchoRequest(packet)) return answerEcho(host, now, packet);
  if (isLaterEchoPiece(packet)) return answerLaterPiece(host, packet);
  if (!isUdp(packet)) return std::nullopt;
  const Fate fate = drawFate(host, now);
  if (!fate) return std::nullopt;
  const std::size_t routers = scenario_.nodes[host].via.size();
  return TimedPacket{*fate, icmpError(IcmpError::PortUnreachable, packet, packet.destination,
                                      static_cast<std::uint8_t>(packet.hopsLeft - routers),
                                      hopLimitAfter(routers))};
}

std::optional<TimedPacket> Internet::answerEcho(std::size_t host, Time now,
                                                const IpPacket& packet) {
  const Fate fate = drawFate(host, now);
  if (packet.fragmented) {
    pieces_.push_back({packet.source, packet.destination, packet.identification, fate});
    if (pieces_.size() > kMostPieces) pieces_.pop_front();
  }
  if (!fate) return std::nullopt;
  return TimedPacket{*fate, echoReply(packet, hopLimitAfter(scenario_.nodes[host].via.size()))};
}

std::optional<TimedPacket> Internet::answerLaterPiece(std::size_t host, const IpPacket& packet) {
  const auto same = [&](const Pieces& each) {
    return each.identification == packet.identification && each.source == packet.source &&
           each.destination == packet.destination;
  };
  const auto first = std::find_if(pieces_.rbegin(), pieces_.rend(), same);
  if (first == pieces_.rend() || !first->fate) return std::nullopt;
  return TimedPacket{*first->fate,
                     echoReply(packet, hopLimitAfter(scenario_.nodes[host].via.size()))};
}

std::optional<TimedPacket> Internet::answerName(Time now, const IpPacket& packet) const {
  const Packet answer = names_.answer(udpData(packet));
  if (answer.empty()) return std::nullopt;
  return TimedPacket{now, udpReply(packet, answer, kFirstHopLimit)};
}

}  // namespace veltrin::lab
