// SPDX-License-Identifier: GPL-3.0-or-later
// The bytes of ICMP echo messages and of the IPv4 options that go with them.
// Readers take any bytes whatever: what is malformed reads as nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "machine/address.h"

namespace veltrin {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

// Bytes before an echo's data (RFC 792 page 14, RFC 4443 section 4.1).
inline constexpr std::size_t kEchoHeaderSize = 8;

// Message types: RFC 792 page 14 for IPv4, RFC 4443 sections 4.1 and 4.2 for IPv6.
inline constexpr std::uint8_t kEchoRequest4 = 8;
inline constexpr std::uint8_t kEchoReply4 = 0;
inline constexpr std::uint8_t kEchoRequest6 = 128;
inline constexpr std::uint8_t kEchoReply6 = 129;

// What an error message reports about an echo.
enum class IcmpError {
  NetUnreachable,
  HostUnreachable,
  ProtocolUnreachable,
  PortUnreachable,
  TooBig,             // larger than the next link's largest packet
  TtlExpired,         // forwarded too often
  ReassemblyExpired,  // not all fragments came in time
  BadParameter,       // a header or option was refused
  Other,
};

// One hop's entry of a timestamp option.
struct HopTime {
  Address hop;
  // Milliseconds since midnight, universal time; other forms have the top bit set.
  std::uint32_t milliseconds = 0;

  bool operator==(const HopTime&) const = default;
};

// The header of an echo request or reply.
struct EchoMessage {
  bool reply = false;
  std::uint16_t id = 0;
  std::uint16_t sequence = 0;
  std::size_t size = 0;  // data bytes behind the header

  bool operator==(const EchoMessage&) const = default;
};

// The one's complement of the one's complement sum of the bytes (RFC 1071);
// 0 for a message that holds its right checksum.
std::uint16_t internetChecksum(ByteView bytes);

// An echo request with `size` bytes of letters as its data. An IPv6 one leaves
// its checksum at 0: it covers addresses that only the kernel knows, and the
// kernel writes it (RFC 3542 section 3.1).
Bytes buildEchoRequest(Family family, std::uint16_t id, std::uint16_t sequence, std::size_t size);

// Gives an echo request a checksum that its sequence number has no part in: the
// first two bytes of its data become the number's complement. A message with less
// data stays as it is.
void evenOut(Family family, Bytes& message);

// The echo message at the start of `message`; nothing for any other message.
// Checks no checksum, as an error quotes only the head of a message.
std::optional<EchoMessage> parseEcho(Family family, ByteView message);

// What stands behind the header of an IPv4 packet (RFC 791 section 3.1);
// nothing when the bytes are no such packet.
std::optional<ByteView> ipv4Payload(ByteView packet);

// What an error message of this type and code reports (RFC 792, RFC 1122
// section 3.2.2.1, RFC 4443 section 3).
IcmpError errorOf(Family family, std::uint8_t type, std::uint8_t code);

// The options that ask for `routeSlots` recorded hops and `stampSlots` hop
// times, padded to whole words (RFC 791 section 3.1). Empty when both are 0.
Bytes buildOptions(int routeSlots, int stampSlots);

// The option that leads a packet through hosts, at most kThroughMost, before its
// destination (loose source and record route, RFC 791 section 3.1), padded to
// whole words. Empty when there are none.
Bytes buildSourceRoute(const std::vector<Address>& through);
inline constexpr std::size_t kThroughMost = 9;

// Bytes of both options together, before padding; at most kOptionsSpace fit.
std::size_t optionsSize(int routeSlots, int stampSlots);
inline constexpr std::size_t kOptionsSpace = 40;

// The hops that a record-route option has collected, in the order passed.
std::vector<Address> recordedRoute(ByteView options);

// The hops and times that a timestamp option has collected.
std::vector<HopTime> recordedTimes(ByteView options);

}  // namespace veltrin
