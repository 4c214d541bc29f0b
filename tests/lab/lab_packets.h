// SPDX-License-Identifier: GPL-3.0-or-later
// Packets for the tests of the simulated Internet, and what tests read of them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lab/packet.h"

namespace veltrin::lab {

inline IpAddress addressOf(std::string_view text) { return IpAddress::parse(text).value(); }

inline void putNumber(Packet& packet, std::size_t at, std::size_t value) {
  packet.at(at) = static_cast<std::uint8_t>(value >> 8);
  packet.at(at + 1) = static_cast<std::uint8_t>(value);
}

inline std::size_t numberAt(Bytes packet, std::size_t at) {
  return static_cast<std::size_t>(packet[at]) << 8 | packet[at + 1];
}

// An IPv4 packet around a payload. `fragment` is the word of flags and offset.
inline Packet makeV4(std::string_view from, std::string_view to, std::uint8_t protocol,
                     const Packet& payload, std::uint8_t ttl = 64, std::size_t fragment = 0,
                     std::size_t identification = 0x1234) {
  Packet packet(20);
  packet[0] = 0x45;
  putNumber(packet, 2, 20 + payload.size());
  putNumber(packet, 4, identification);
  putNumber(packet, 6, fragment);
  packet[8] = ttl;
  packet[9] = protocol;
  std::ranges::copy(addressOf(from).bytes(), packet.begin() + 12);
  std::ranges::copy(addressOf(to).bytes(), packet.begin() + 16);
  putNumber(packet, 10, internetChecksum(packet));
  packet.insert(packet.end(), payload.begin(), payload.end());
  return packet;
}

// An IPv6 packet around a payload.
inline Packet makeV6(std::string_view from, std::string_view to, std::uint8_t protocol,
                     const Packet& payload, std::uint8_t hopLimit = 64) {
  Packet packet(40);
  packet[0] = 0x60;
  putNumber(packet, 4, payload.size());
  packet[6] = protocol;
  packet[7] = hopLimit;
  std::ranges::copy(addressOf(from).bytes(), packet.begin() + 8);
  std::ranges::copy(addressOf(to).bytes(), packet.begin() + 24);
  packet.insert(packet.end(), payload.begin(), payload.end());
  return packet;
}

// The checksum of a payload that covers its addresses too.
inline std::uint16_t checksumWithAddresses(std::string_view from, std::string_view to,
                                           std::uint8_t protocol, const Packet& payload) {
  Packet all;
  for (const auto end : {from, to}) {
    const IpAddress address = addressOf(end);
    all.insert(all.end(), address.bytes().begin(), address.bytes().end());
  }
  all.insert(all.end(), {0, protocol, static_cast<std::uint8_t>(payload.size() >> 8),
                         static_cast<std::uint8_t>(payload.size())});
  all.insert(all.end(), payload.begin(), payload.end());
  return internetChecksum(all);
}

// An echo request of type 8 or 128 without a checksum, with `length` data bytes.
inline Packet makeEchoBody(std::uint8_t type, std::size_t length) {
  Packet body{type, 0, 0, 0, 0x11, 0x22, 0, 1};
  for (std::size_t at = 0; at < length; ++at)
    body.push_back(static_cast<std::uint8_t>('a' + at % 23));
  return body;
}

inline constexpr std::string_view kMachine = "192.0.2.2";
inline constexpr std::string_view kMachineV6 = "2001:db8::2";

inline Packet makeEcho(std::string_view to, std::uint8_t ttl = 64, std::size_t length = 32) {
  Packet body = makeEchoBody(8, length);
  putNumber(body, 2, internetChecksum(body));
  return makeV4(kMachine, to, 1, body, ttl);
}

inline Packet makeEchoV6(std::string_view to, std::uint8_t hopLimit = 64) {
  Packet body = makeEchoBody(128, 32);
  putNumber(body, 2, checksumWithAddresses(kMachineV6, to, 58, body));
  return makeV6(kMachineV6, to, 58, body, hopLimit);
}

// A UDP datagram from port 40000.
inline Packet makeUdp(std::string_view to, std::size_t port, const Packet& data,
                      std::uint8_t ttl = 64) {
  Packet body(8);
  putNumber(body, 0, 40000);
  putNumber(body, 2, port);
  putNumber(body, 4, 8 + data.size());
  body.insert(body.end(), data.begin(), data.end());
  putNumber(body, 6, checksumWithAddresses(kMachine, to, 17, body));
  return makeV4(kMachine, to, 17, body, ttl);
}

// A DNS question for the Internet's records of a type.
inline Packet makeQuestion(std::string_view name, std::uint8_t type) {
  Packet query{0xAB, 0xCD, 0x01, 0, 0, 1, 0, 0, 0, 0, 0, 0};
  while (!name.empty()) {
    const std::string_view label = name.substr(0, name.find('.'));
    query.push_back(static_cast<std::uint8_t>(label.size()));
    query.insert(query.end(), label.begin(), label.end());
    name.remove_prefix(std::min(name.size(), label.size() + 1));
  }
  query.insert(query.end(), {0, 0, type, 0, 1});
  return query;
}

// The last bytes of an answer.
inline Packet tail(const Packet& bytes, std::size_t count) {
  return {bytes.end() - static_cast<std::ptrdiff_t>(std::min(count, bytes.size())), bytes.end()};
}

}  // namespace veltrin::lab
