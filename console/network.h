// SPDX-License-Identifier: GPL-3.0-or-later
// What a tool that sends echoes needs of the world, without a socket in it.
//
// The tools decide what to send and how to read what comes back; a Network does
// it. LinuxNetwork is the real one, tests script their own with a virtual clock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "console/icmp.h"
#include "machine/address.h"

namespace veltrin {

// A moment of a clock that never goes back, or a span of it.
using Microseconds = std::int64_t;

inline constexpr Microseconds kMillisecond = 1000;
inline constexpr Microseconds kSecond = 1000 * kMillisecond;

// Which addresses of a name will do.
enum class FamilyChoice { Any, IPv4, IPv6 };

// The address that a destination stands for.
struct Destination {
  Address address;
  bool numeric = false;  // whether the text was an address, not a name
};

// One echo request.
struct EchoRequest {
  Address destination;
  std::uint16_t sequence = 0;  // an answer bears it again
  std::size_t size = 0;        // data bytes, 0 to 65500
  int ttl = 0;                 // 1 to 255; 0 leaves it to the system
  int tos = 0;                 // type of service, 0 to 255; IPv4 only
  bool dontFragment = false;   // IPv4 only
  int routeSlots = 0;          // hops to record, 0 to 9; IPv4 only
  int stampSlots = 0;          // hops to stamp the time, 0 to 4; IPv4 only
  // Hosts to pass in this order, at most kThroughMost (loose source routing); IPv4
  // only, and not together with slots.
  std::vector<Address> through;
  // Gives all of a run's echoes one checksum, so that routers which share load
  // out by it send them all one way.
  bool oneFlow = false;
  int priority = 0;  // of the frames, 0 to 6
};

enum class SendResult {
  Sent,
  TooBig,  // larger than the interface's largest packet and not to be split
  Failed,  // no route, refused by this machine, no such source
};

// How a send went, and the moment at which the packet left.
struct Sending {
  SendResult result = SendResult::Sent;
  Microseconds at = 0;
};

// An answer to one of the echoes sent by this Network: nobody else's is handed on.
struct Incoming {
  std::uint16_t sequence = 0;
  Address from;         // who answered: the destination, or a router on the way
  Microseconds at = 0;  // when it reached this machine
  // What went wrong; nothing for an echo reply, to which the rest belongs.
  std::optional<IcmpError> error;
  std::size_t size = 0;  // data bytes of the reply
  int ttl = 0;           // 0 when not known
  std::vector<Address> route;
  std::vector<HopTime> stamps;
};

// What came of looking a name up.
struct NameAnswer {
  Address address;
  std::optional<std::string> name;  // nothing when it has none
};

enum class WaitEnd {
  Arrived,      // an answer was stored
  NameCame,     // takeName has something to hand over
  TimedOut,     // the deadline passed
  Interrupted,  // the user asked to end
};

enum class OpenResult {
  Opened,
  NotAllowed,  // the system gives this user no ICMP socket of the family
  BadSource,   // the source is not an address of this machine
};

class Network {
 public:
  virtual ~Network() = default;

  // The address that a text spells, or the first one of a name, in the order in
  // which the system prefers them. Nothing when there is none of the chosen family.
  virtual std::optional<Destination> resolve(const std::string& name, FamilyChoice choice) = 0;

  // The name of an address; nothing when it has none.
  virtual std::optional<std::string> nameOf(const Address& address) = 0;

  // Looks up the name of an address beside everything else; to be called behind
  // open. The end of it ends a wait, and takeName hands over what came of it.
  virtual void beginNameOf(const Address& address) = 0;
  virtual std::optional<NameAnswer> takeName() = 0;

  // The address of this machine that packets to a destination leave from; nothing
  // when there is no way to it.
  virtual std::optional<Address> sourceFor(const Address& destination) = 0;

  // This machine's name.
  virtual std::string hostName() = 0;

  // Makes ready to send echoes of a family, from `source` when one is given.
  // Called once, before the first send.
  virtual OpenResult open(Family family, const std::optional<Address>& source) = 0;

  virtual Sending send(const EchoRequest& request) = 0;

  // Waits for the next answer until `deadline`. An answer that is already there
  // is handed over even when the deadline has passed.
  virtual WaitEnd wait(Microseconds deadline, Incoming& incoming) = 0;

  // Sleeps until a moment, or until the user asks to end. Answers that come
  // meanwhile are kept with their moments, and wake nobody.
  virtual void rest(Microseconds until) = 0;

  virtual Microseconds now() = 0;
};

}  // namespace veltrin
