// SPDX-License-Identifier: GPL-3.0-or-later
// The simulated Internet itself: packets in, timed packets out. It knows no file
// descriptor and no clock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "lab/chance.h"
#include "lab/names.h"
#include "lab/packet.h"
#include "lab/scenario.h"

namespace veltrin::lab {

// Who is at an end of the simulated Internet: the machine, or the hosts that really serve.
enum class Side { Machine, Servers };

// A packet on its way and the moment at which it reaches the side it goes to.
struct TimedPacket {
  Time due{};
  Packet bytes;
  Side to = Side::Machine;
};

// Answers packets as the hosts and routers of a scenario would: ICMP echo,
// errors along the way, DNS. Carries TCP between the machine and web hosts, whose servers
// are real: what goes out meets all that an echo meets, half the delay lies on each way, and
// what comes back is not lost unless an echo of that moment would not come back either. The same
// scenario and the same packets at the same times give the same answers: each node and each flow
// draws its chances from a generator of its own, so that traffic to one changes nothing for
// another.
class Internet {
 public:
  explicit Internet(Scenario scenario);

  // Takes a packet that the machine sent at `now`, which never runs backwards,
  // and gives what comes back. Anything that is no sound packet, or is for
  // nobody, vanishes.
  std::vector<TimedPacket> receive(Time now, Bytes bytes);

  // Takes a packet that a web host's server sent at `now`, and gives it to the machine.
  // Anything that is no sound TCP packet vanishes.
  std::vector<TimedPacket> receiveFromServers(Time now, Bytes bytes) const;

 private:
  // When the answer to a request comes: never, once or twice.
  using Fate = std::vector<Time>;

  struct NodeState {
    Chance chance;
    std::uint64_t answers = 0;  // requests that were due an answer
    Time errorsUntil{};         // how far ahead its errors have used up its rate
  };

  // The packets to one destination with one hop limit.
  struct Flow {
    Chance chance;
    std::uint64_t packets = 0;
    std::map<std::size_t, std::uint64_t> crossed{};  // those that tried the link to a node
  };

  // A packet on its way out.
  struct Journey {
    const IpPacket& packet;
    Time now{};
    Time links{};              // delay of the links so far, there and back
    std::uint8_t routers = 0;  // passed so far

    std::uint8_t hopsLeft() const { return static_cast<std::uint8_t>(packet.hopsLeft - routers); }
  };

  // The fate that the pieces of one request share.
  struct Pieces {
    IpAddress source;
    IpAddress destination;
    std::uint32_t identification = 0;
    Fate fate;
  };

  const Behaviour& behaviour(std::size_t node, Time now) const;
  Flow& flowTo(std::size_t destination, std::uint8_t hopLimit);
  std::vector<TimedPacket> carry(std::size_t destination, Time now, const IpPacket& packet);
  bool cross(Flow& flow, std::size_t node, Journey& journey) const;
  Fate drawFate(std::size_t node, const Journey& journey);
  std::vector<TimedPacket> report(std::size_t router, const Report& report, const Journey& journey);
  std::vector<TimedPacket> atHost(std::size_t host, const Journey& journey);
  std::vector<TimedPacket> toServer(std::size_t host, const Journey& journey);
  std::optional<Time> wayBack(std::size_t host, Time now) const;
  std::vector<TimedPacket> answerEcho(std::size_t host, const Journey& journey);
  std::vector<TimedPacket> answerLaterPiece(std::size_t host, const IpPacket& packet) const;
  std::vector<TimedPacket> answerName(Time now, const IpPacket& packet);

  Scenario scenario_;
  Names names_;
  std::map<IpAddress, std::size_t> byAddress_;  // positions in Scenario::nodes
  std::set<IpAddress> dns_;
  std::vector<NodeState> states_;                               // one for each node
  std::map<std::pair<std::size_t, std::uint8_t>, Flow> flows_;  // by destination and hop limit
  std::deque<Pieces> pieces_;  // the latest requests in pieces, newest last
  std::optional<Time> begin_;  // when the first packet to a node came
};

}  // namespace veltrin::lab
