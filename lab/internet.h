// The simulated Internet itself: packets in, timed packets out. It knows no file
// descriptor and no clock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <vector>

#include "lab/names.h"
#include "lab/packet.h"
#include "lab/scenario.h"

namespace veltrin::lab {

// A packet on its way back and the moment at which it reaches the machine.
struct TimedPacket {
  Time due{};
  Packet bytes;
};

// Answers packets as the hosts and routers of a scenario would: ICMP echo,
// errors along the way, DNS. The same scenario and the same packets at the same
// times give the same answers: each node draws its chances from a generator of
// its own, so that traffic to one changes nothing for another.
class Internet {
 public:
  explicit Internet(Scenario scenario);

  // Takes a packet that the machine sent at `now` and gives what comes back.
  // Anything that is no sound packet, or is for nobody, vanishes.
  std::vector<TimedPacket> receive(Time now, Bytes bytes);

 private:
  // When the answer to a request comes; nothing when it is lost.
  using Fate = std::optional<Time>;

  struct NodeState {
    std::mt19937_64 chance;
    std::uint64_t answers = 0;  // requests that were due an answer
  };

  // The fate that the pieces of one request share.
  struct Pieces {
    IpAddress source;
    IpAddress destination;
    std::uint32_t identification = 0;
    Fate fate;
  };

  Fate drawFate(std::size_t node, Time now);
  std::optional<TimedPacket> atRouter(std::size_t router, Time now, const IpPacket& packet);
  std::optional<TimedPacket> atHost(std::size_t host, Time now, const IpPacket& packet);
  std::optional<TimedPacket> answerEcho(std::size_t host, Time now, const IpPacket& packet);
  std::optional<TimedPacket> answerLaterPiece(std::size_t host, const IpPacket& packet);
  std::optional<TimedPacket> answerName(Time now, const IpPacket& packet) const;

  Scenario scenario_;
  Names names_;
  std::map<IpAddress, std::size_t> byAddress_;  // positions in Scenario::nodes
  std::set<IpAddress> dns_;
  std::vector<NodeState> states_;  // one for each node
  std::deque<Pieces> pieces_;      // the latest requests in pieces, newest last
};

}  // namespace veltrin::lab
