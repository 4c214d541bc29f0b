// SPDX-License-Identifier: GPL-3.0-or-later
// Everything of the lab that reads bytes from outside: packets as they come, DNS
// messages inside sound packets, pieces of echoes, requests to a web host, scenario texts.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "lab/http.h"
#include "lab/internet.h"
#include "lab/names.h"
#include "lab/packet.h"
#include "lab/scenario.h"

namespace veltrin::lab {
namespace {

constexpr std::string_view kScenario =
    "[internet]\n"
    "machine = 192.0.2.2/24\n"
    "dns = 198.51.100.53\n"
    "public = near.example\n"
    "[router gateway.example]\n"
    "address = 192.0.2.1, 2001:db8::1\n"
    "twice = every 2nd\n"
    "mtu = 68\n"
    "[router second.example]\n"
    "address = 192.0.2.3, 2001:db8::3\n"
    "beyond = net-unreachable\n"
    "[host near.example]\n"
    "address = 203.0.113.2, 2001:db8:0:2::1\n"
    "jitter = 0 ms\n"
    "late = every 3rd by 1 ms\n"
    "link-loss-pattern = 1 of 7\n"
    "via = gateway.example | second.example\n"
    "[web near.example]\n"
    "files = /file 1\n";

// Every answer, and every packet that is carried to or from a server, must itself be one
// that a reader takes.
void mustAnswerSoundly(Internet& internet, Bytes bytes) {
  for (const TimedPacket& answer : internet.receive(Time::zero(), bytes)) {
    if (!readIp(answer.bytes)) std::abort();
  }
  for (const TimedPacket& carried : internet.receiveFromServers(Time::zero(), bytes)) {
    if (carried.to != Side::Machine || !readIp(carried.bytes)) std::abort();
  }
}

void put(Packet& packet, std::size_t at, std::size_t value) {
  packet[at] = static_cast<std::uint8_t>(value >> 8);
  packet[at + 1] = static_cast<std::uint8_t>(value);
}

void putAddress(Packet& packet, std::size_t at, std::string_view text) {
  const IpAddress address = IpAddress::parse(text).value();
  std::ranges::copy(address.bytes(), packet.begin() + static_cast<std::ptrdiff_t>(at));
}

// A sound IPv4 header around the input; its first bytes choose the protocol, the
// hop limit and the place among the pieces.
Packet wrapV4(Bytes input, std::string_view destination, std::uint8_t protocol) {
  Packet packet(20);
  packet[0] = 0x45;
  put(packet, 2, 20 + input.size());
  packet[7] = input.empty() ? 0 : input[0] & 1;
  packet[8] = input.size() < 2 ? 1 : input[1] & 3;
  packet[9] = protocol;
  putAddress(packet, 12, "192.0.2.2");
  putAddress(packet, 16, destination);
  put(packet, 10, internetChecksum(packet));
  packet.insert(packet.end(), input.begin(), input.end());
  return packet;
}

Packet wrapV6(Bytes input, std::uint8_t protocol) {
  Packet packet(40);
  packet[0] = 0x60;
  put(packet, 4, input.size());
  packet[6] = protocol;
  packet[7] = 2;
  putAddress(packet, 8, "2001:db8::2");
  putAddress(packet, 24, "2001:db8:0:2::1");
  packet.insert(packet.end(), input.begin(), input.end());
  return packet;
}

// A datagram to the DNS without a checksum.
Packet wrapDns(Bytes input) {
  Packet datagram(8);
  put(datagram, 0, 40000);
  put(datagram, 2, 53);
  put(datagram, 4, 8 + input.size());
  datagram.insert(datagram.end(), input.begin(), input.end());
  return wrapV4(datagram, "198.51.100.53", kProtocolUdp);
}

// What a client of a web host may say.
void mustAnswerRequest(Bytes input) {
  WebSite site;
  site.files = {{"/file", 1}};
  const std::string_view head(reinterpret_cast<const char*>(input.data()), input.size());
  const WebAnswer answer = answerTo(head, site, 0);
  if (!answer.head.ends_with("\r\n\r\n") || answer.body > 1) std::abort();
}

void readAsScenario(Bytes input) {
  try {
    readScenario({reinterpret_cast<const char*>(input.data()), input.size()});
  } catch (const ScenarioError&) {
    // A text that is no scenario is an answer too.
  }
}

}  // namespace
}  // namespace veltrin::lab

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace veltrin::lab;
  static Internet internet(readScenario(kScenario));
  const Bytes input(data, std::min<std::size_t>(size, 4096));
  mustAnswerSoundly(internet, input);
  mustAnswerSoundly(internet, wrapDns(input));
  for (const std::uint8_t protocol : {kProtocolIcmp, kProtocolTcp, kProtocolUdp}) {
    mustAnswerSoundly(internet, wrapV4(input, "203.0.113.2", protocol));
  }
  for (const std::uint8_t protocol : {kProtocolIcmpV6, std::uint8_t{44}, std::uint8_t{0}}) {
    mustAnswerSoundly(internet, wrapV6(input, protocol));
  }
  mustAnswerRequest(input);
  readAsScenario(input);
  return 0;
}
