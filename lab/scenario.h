// SPDX-License-Identifier: GPL-3.0-or-later
// What a simulated Internet consists of, and the reader of scenario files.
//
// A scenario file is an INI text. Comments take whole lines and begin with ";"
// or "#". Its sections:
//
//   [internet]                    exactly once
//   title = One line for --list
//   machine = 192.0.2.2/24, 2001:db8::2/64   addresses of the machine inside
//   gateway = 192.0.2.1, 2001:db8::1         first router; default: none named
//   dns = 198.51.100.53                      addresses that answer DNS questions
//   seed = 7                                 of all that is random; default 1
//   mtu = 1500                               of the machine's interface, in bytes
//   public = one.example, two.example        hosts that answer for the Internet
//                                            outside; default: none
//
// With "public", every name of the Internet outside exists: the first that is asked
// for leads to the first of these hosts, the next to the second, and so on around.
// What a name leads to it keeps; one that begins with "ipv4." has IPv4 addresses
// alone, where its host has any. Names that the Internet sets aside, such as all
// that end in ".example", and those without a dot exist only as a host or router.
//
//   [host far.example]            something to reach; also [router NAME]
//   address = 203.0.113.80, 2001:db8:80::1   at least one
//   nameless = yes                the DNS does not know it
//   via = one.example, two.example           routers on the way, nearest first
//
// Several routers at one hop, which take turns: "via = one, two-a | two-b, three".
// The turns are counted for each destination and hop limit by itself: the first
// packet takes the first of each hop's routers, the second the second, and so on
// around. Routers have no "via": their way is that of the first host whose way
// they are on.
//
// What a node answers itself:
//
//   delay = 80 ms                 there and back, from the machine, and not from
//                                 the hop before; units us, ms, s; default 0
//   jitter = 20 ms                each answer comes up to this earlier or later
//   loss = 20 %                   of the answers, at random
//   loss-pattern = every 5th      instead: the 5th is lost, the 10th, ...; or
//                                 "13 of 100", spread evenly
//   twice = every 4th             answers that come twice, one behind the other
//   late = every 5th by 300 ms    answers that come so much later
//   silent = yes                  answers nothing, though it passes packets on
//   rate-limit = 2                errors that a router sends: as many at once,
//                                 and then as many a second
//
// What comes to a node, and so what passes on behind it:
//
//   link-delay = 5 ms             on the link towards the machine, there and back;
//                                 adds to the delay of this node and of all behind
//   link-loss = 13 %              on that link, of what goes out, at random
//   link-loss-pattern = 13 of 100 instead; counted for each destination and hop
//                                 limit by itself, so that packets to several
//                                 hops by turns lose alike
//   mtu = 1400                    longest packet that a router passes on. Of a
//                                 longer one that must not be cut into pieces it
//                                 tells; any other passes
//   beyond = lost                 a router passes nothing on, without a word; with
//                                 "host-unreachable" or "net-unreachable" it tells
//                                 so; default "passes"
//
// Changes over time: sections behind that of the node, with any keys of the last
// two lists. Other keys keep their values. Time begins with the first packet to a
// host or router.
//
//   [at 20 s one.example]
//   beyond = lost
//
// A host that serves files by HTTP, over the way that leads to it; behind its section:
//
//   [web far.example]
//   port = 80                     default 80
//   rate = 625000                 bytes of a file a second, of each answer by itself;
//                                 default: no limit
//   stall = after 50000 for 2 s   each longer answer pauses so long behind so many
//                                 bytes; default: never
//   files = /one.bin 80000, /two.bin 5000    paths and sizes in bytes; at least one
//
// Settings of the program that runs inside, in place of those that its installation.ini
// names alike, for as long as the lab runs and inside it alone:
//
//   [installation]
//   ProbeHost = far.example
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "lab/address.h"
#include "lab/behaviour.h"
#include "lab/web_site.h"

namespace veltrin::lab {

// From a moment on a node behaves otherwise.
struct Change {
  Time at{};  // since the first packet to a host or router
  Behaviour behaviour;
};

// A host or a router.
struct Node {
  std::string name;
  bool router = false;
  std::vector<IpAddress> addresses;
  bool nameless = false;
  // The hops of its way, nearest first: the routers there, as positions in
  // Scenario::nodes. They take turns.
  std::vector<std::vector<std::size_t>> via;
  Behaviour atFirst;
  std::vector<Change> changes;  // earliest first
  std::optional<WebSite> web;   // what a host serves

  // How it behaves at a moment since the first packet.
  const Behaviour& behaviour(Time at) const;
};

// An address of the machine inside the lab and the length of its network part.
struct MachineAddress {
  IpAddress address;
  std::uint8_t prefixLength = 0;
};

// A setting of the program that runs inside.
struct Setting {
  std::string key;
  std::string value;

  bool operator==(const Setting&) const = default;
};

struct Scenario {
  std::string title;
  std::vector<MachineAddress> machine;
  std::vector<IpAddress> gateways;  // at most one of each family
  std::vector<IpAddress> dns;
  std::uint64_t seed = 1;
  std::uint32_t mtu = 1500;
  std::vector<Node> nodes;
  // Positions in `nodes` of the hosts that answer for the Internet outside.
  std::vector<std::size_t> publicHosts;
  std::vector<Setting> installation;
};

// A scenario text that says something else than a scenario. what() reads
// "line N: " and what is wrong there.
class ScenarioError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Reads the text of a scenario file. Throws ScenarioError.
Scenario readScenario(std::string_view text);

}  // namespace veltrin::lab
