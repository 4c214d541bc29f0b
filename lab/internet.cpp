// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/internet.h"

#include <algorithm>

#include "text/strings.h"

namespace veltrin::lab {
namespace {

using std::chrono::seconds;

// Hop limit of a new packet (the default that RFC 1700 gives).
constexpr std::uint8_t kFirstHopLimit = 64;

constexpr std::uint16_t kDnsPort = 53;

// How many requests in pieces are remembered at a time.
constexpr std::size_t kMostPieces = 64;

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

// What a router says instead of passing a packet on; nothing when it passes it
// or loses it.
std::optional<Report> refusal(const Behaviour& router, const IpPacket& packet) {
  if (router.beyond == Beyond::HostUnreachable) return Report{IcmpError::HostUnreachable};
  if (router.beyond == Beyond::NetUnreachable) return Report{IcmpError::NetUnreachable};
  if (router.mtu != 0 && packet.whole.size() > router.mtu && !packet.mayBeCut) {
    return Report{IcmpError::TooLong, router.mtu};
  }
  return std::nullopt;
}

// Takes one error from what a limit of errors a second allows: a bucket that
// holds as many and fills at that rate.
bool takeError(Time& errorsUntil, std::uint32_t limit, Time now) {
  if (limit == 0) return true;
  const Time each = Time(seconds(1)) / limit;
  if (errorsUntil > now + seconds(1) - each) return false;
  errorsUntil = std::max(errorsUntil, now) + each;
  return true;
}

std::vector<TimedPacket> atMoments(const std::vector<Time>& moments, const Packet& bytes) {
  std::vector<TimedPacket> answers;
  answers.reserve(moments.size());
  for (const Time moment : moments) answers.push_back({moment, bytes});
  return answers;
}

}  // namespace

Internet::Internet(Scenario scenario) : scenario_(std::move(scenario)) {
  dns_.insert(scenario_.dns.begin(), scenario_.dns.end());
  for (std::size_t node = 0; node < scenario_.nodes.size(); ++node) {
    const Node& described = scenario_.nodes[node];
    for (const IpAddress& address : described.addresses) byAddress_[address] = node;
    if (!described.nameless) names_.add(described.name, described.addresses);
    states_.push_back({Chance(scenario_.seed ^ hashOf(LCase(described.name)))});
  }
  for (const std::size_t host : scenario_.publicHosts) {
    names_.addPublicHost(scenario_.nodes[host].addresses);
  }
}

std::vector<TimedPacket> Internet::receive(Time now, Bytes bytes) {
  const auto packet = readIp(bytes);
  if (!packet) return {};
  if (dns_.contains(packet->destination) && isUdp(*packet) &&
      udpDestinationPort(*packet) == kDnsPort) {
    return answerName(now, *packet);
  }
  const auto known = byAddress_.find(packet->destination);
  if (known == byAddress_.end() || packet->hopsLeft == 0) return {};
  if (!begin_) begin_ = now;
  if (isLaterEchoPiece(*packet)) return answerLaterPiece(known->second, *packet);
  return carry(known->second, now, *packet);
}

std::vector<TimedPacket> Internet::receiveFromServers(Time now, Bytes bytes) const {
  const auto packet = readIp(bytes);
  if (!packet || packet->protocol != kProtocolTcp) return {};
  const auto host = byAddress_.find(packet->source);
  if (host == byAddress_.end() || !scenario_.nodes[host->second].web) return {};
  const auto delay = wayBack(host->second, now);
  if (!delay) return {};
  return {{now + *delay, Packet(packet->whole.begin(), packet->whole.end())}};
}

// How long a packet of a server takes to the machine; nothing when it does not get there.
std::optional<Time> Internet::wayBack(std::size_t host, Time now) const {
  const Behaviour& present = behaviour(host, now);
  if (present.silent) return std::nullopt;
  Time delay = present.delay + present.linkDelay;
  for (const auto& hop : scenario_.nodes[host].via) {
    const Behaviour& router = behaviour(hop[0], now);
    if (router.beyond != Beyond::Passes) return std::nullopt;
    delay += router.linkDelay;
  }
  return delay / 2;
}

const Behaviour& Internet::behaviour(std::size_t node, Time now) const {
  return scenario_.nodes[node].behaviour(now - begin_.value_or(now));
}

Internet::Flow& Internet::flowTo(std::size_t destination, std::uint8_t hopLimit) {
  const auto key = std::pair(destination, hopLimit);
  const auto known = flows_.find(key);
  if (known != flows_.end()) return known->second;
  const std::string name =
      LCase(scenario_.nodes[destination].name) + ' ' + std::to_string(hopLimit);
  return flows_.emplace(key, Flow{Chance(scenario_.seed ^ hashOf(name))}).first->second;
}

// Goes from router to router until one keeps the packet or the host is reached.
std::vector<TimedPacket> Internet::carry(std::size_t destination, Time now,
                                         const IpPacket& packet) {
  Flow& flow = flowTo(destination, packet.hopsLeft);
  const std::uint64_t turn = flow.packets++;
  Journey journey{packet, now};
  for (const auto& hop : scenario_.nodes[destination].via) {
    const std::size_t router = hop[turn % hop.size()];
    const Behaviour& present = behaviour(router, now);
    if (!cross(flow, router, journey)) return {};
    if (journey.hopsLeft() == 1) return report(router, {IcmpError::TimeExceeded}, journey);
    if (present.beyond == Beyond::Lost) return {};
    if (const auto said = refusal(present, packet)) return report(router, *said, journey);
    ++journey.routers;
  }
  if (!cross(flow, destination, journey)) return {};
  return atHost(destination, journey);
}

// Over the link to a node; false when the packet is lost there.
bool Internet::cross(Flow& flow, std::size_t node, Journey& journey) const {
  const Behaviour& present = behaviour(node, journey.now);
  journey.links += present.linkDelay;
  return !flow.chance.loses(present.linkLoss, ++flow.crossed[node]);
}

Internet::Fate Internet::drawFate(std::size_t node, const Journey& journey) {
  const Behaviour& present = behaviour(node, journey.now);
  NodeState& state = states_[node];
  ++state.answers;
  // Both are drawn whatever the node is like, so that a change of its loss
  // leaves its jitter as it was.
  const bool lost = state.chance.loses(present.loss, state.answers);
  const double jitter = state.chance.draw() * 2 - 1;
  if (present.silent || lost) return {};
  const double shift = jitter * static_cast<double>(present.jitter.count());
  Time moment = journey.now + journey.links + present.delay + Time(static_cast<Time::rep>(shift));
  if (present.late.picks(state.answers)) moment += present.lateBy;
  return Fate(present.twice.picks(state.answers) ? 2 : 1, moment);
}

std::vector<TimedPacket> Internet::report(std::size_t router, const Report& report,
                                          const Journey& journey) {
  if (!mayCauseError(journey.packet)) return {};
  const auto& addresses = scenario_.nodes[router].addresses;
  const auto own = std::find_if(addresses.begin(), addresses.end(), [&](const IpAddress& address) {
    return address.family() == journey.packet.family();
  });
  if (own == addresses.end()) return {};
  const std::uint32_t limit = behaviour(router, journey.now).rateLimit;
  if (!takeError(states_[router].errorsUntil, limit, journey.now)) return {};
  return atMoments(
      drawFate(router, journey),
      icmpError(report, journey.packet, *own, journey.hopsLeft(), hopLimitAfter(journey.routers)));
}

std::vector<TimedPacket> Internet::atHost(std::size_t host, const Journey& journey) {
  const IpPacket& packet = journey.packet;
  if (isEchoRequest(packet)) return answerEcho(host, journey);
  if (packet.protocol == kProtocolTcp && scenario_.nodes[host].web) return toServer(host, journey);
  if (!isUdp(packet)) return {};
  return atMoments(drawFate(host, journey),
                   icmpError({IcmpError::PortUnreachable}, packet, packet.destination,
                             journey.hopsLeft(), hopLimitAfter(journey.routers)));
}

// The whole delay is told for the way there and back, of which this is one half.
std::vector<TimedPacket> Internet::toServer(std::size_t host, const Journey& journey) {
  const Bytes whole = journey.packet.whole;
  std::vector<TimedPacket> packets;
  for (const Time back : drawFate(host, journey)) {
    packets.push_back({journey.now + (back - journey.now) / 2, Packet(whole.begin(), whole.end()),
                       Side::Servers});
  }
  return packets;
}

std::vector<TimedPacket> Internet::answerEcho(std::size_t host, const Journey& journey) {
  const IpPacket& packet = journey.packet;
  const Fate fate = drawFate(host, journey);
  if (packet.fragmented) {
    pieces_.push_back({packet.source, packet.destination, packet.identification, fate});
    if (pieces_.size() > kMostPieces) pieces_.pop_front();
  }
  return atMoments(fate, echoReply(packet, hopLimitAfter(journey.routers)));
}

std::vector<TimedPacket> Internet::answerLaterPiece(std::size_t host,
                                                    const IpPacket& packet) const {
  const auto same = [&](const Pieces& each) {
    return each.identification == packet.identification && each.source == packet.source &&
           each.destination == packet.destination;
  };
  const auto first = std::find_if(pieces_.rbegin(), pieces_.rend(), same);
  if (first == pieces_.rend()) return {};
  return atMoments(first->fate, echoReply(packet, hopLimitAfter(scenario_.nodes[host].via.size())));
}

std::vector<TimedPacket> Internet::answerName(Time now, const IpPacket& packet) {
  const Packet answer = names_.answer(udpData(packet));
  if (answer.empty()) return {};
  return {{now, udpReply(packet, answer, kFirstHopLimit)}};
}

}  // namespace veltrin::lab
