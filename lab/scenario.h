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
//
//   [host far.example]            something to reach; also [router NAME]
//   address = 203.0.113.80, 2001:db8:80::1   at least one
//   delay = 80 ms                 there and back; units us, ms, s; default 0
//   jitter = 20 ms                each reply comes up to this earlier or later
//   loss = 20 %                   of the echoes, at random
//   loss-pattern = every 5th      instead: the 5th echo is lost, the 10th, ...
//   silent = yes                  answers nothing
//   nameless = yes                the DNS does not know it
//   via = one.example, two.example           routers on the way, nearest first
//
// Routers take the same keys but "via": their way is that of the first host
// whose way they are on. Delay, jitter, loss and silence of a router concern
// what it answers itself, not what it passes on.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "lab/address.h"

namespace veltrin::lab {

// A duration, or a moment as the time since the lab began.
using Time = std::chrono::nanoseconds;

// A host or a router.
struct Node {
  std::string name;
  bool router = false;
  std::vector<IpAddress> addresses;
  Time delay{};                 // round trip
  Time jitter{};                // 0 to delay; replies take delay - jitter to delay + jitter
  double loss = 0;              // 0 to 1
  std::uint32_t loseEvery = 0;  // 0: no pattern
  bool silent = false;
  bool nameless = false;
  std::vector<std::size_t> via;  // positions in Scenario::nodes, nearest first
};

// An address of the machine inside the lab and the length of its network part.
struct MachineAddress {
  IpAddress address;
  std::uint8_t prefixLength = 0;
};

struct Scenario {
  std::string title;
  std::vector<MachineAddress> machine;
  std::vector<IpAddress> gateways;  // at most one of each family
  std::vector<IpAddress> dns;
  std::uint64_t seed = 1;
  std::uint32_t mtu = 1500;
  std::vector<Node> nodes;
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
