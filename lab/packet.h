// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and building the packets that the simulated Internet understands:
// IPv4 and IPv6, ICMP echo and errors, UDP.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "lab/address.h"

namespace veltrin::lab {

using Packet = std::vector<std::uint8_t>;
using Bytes = std::span<const std::uint8_t>;

// Protocol numbers of the headers below (IANA "Assigned Internet Protocol
// Numbers").
inline constexpr std::uint8_t kProtocolIcmp = 1;
inline constexpr std::uint8_t kProtocolTcp = 6;
inline constexpr std::uint8_t kProtocolUdp = 17;
inline constexpr std::uint8_t kProtocolIcmpV6 = 58;

// The one's complement checksum of RFC 1071 over all parts in a row, as the
// number that goes into the packet. Every part but the last must have an even
// length. Over bytes that hold their own right checksum it is 0.
std::uint16_t internetChecksum(std::span<const Bytes> parts);
std::uint16_t internetChecksum(Bytes bytes);

// What the headers of one IP packet say. Refers to the bytes that it was read
// from and must not outlive them.
struct IpPacket {
  Bytes whole;  // from the IP header to the packet's own end
  IpAddress source;
  IpAddress destination;
  std::uint8_t hopsLeft = 0;         // TTL or hop limit as it arrived
  std::uint8_t protocol = 0;         // of the payload
  std::size_t payloadStart = 0;      // offset of the payload in `whole`
  bool mayBeCut = false;             // routers may cut it into pieces
  bool fragmented = false;           // one of several pieces of a packet
  std::size_t fragmentOffset = 0;    // bytes of the payload before this piece
  std::uint32_t identification = 0;  // the same in all pieces of a packet

  Family family() const { return source.family(); }
  Bytes payload() const { return whole.subspan(payloadStart); }
};

// Reads the headers. Nothing for bytes that are no sound IP packet: cut short, a
// wrong header checksum, lengths that contradict each other. Bytes behind the
// packet's own end are left out.
std::optional<IpPacket> readIp(Bytes bytes);

// Whether a packet is an echo request, or the first piece of one. A whole
// request with a wrong checksum is none.
bool isEchoRequest(const IpPacket& packet);

// Whether the payload can be a later piece of an echo request.
bool isLaterEchoPiece(const IpPacket& packet);

// Whether a packet is a whole UDP datagram with sound length and checksum.
bool isUdp(const IpPacket& packet);

// The data behind the UDP header, and the port it is for, of a packet for which
// isUdp is true.
Bytes udpData(const IpPacket& packet);
std::uint16_t udpDestinationPort(const IpPacket& packet);

// The reply to an echo request, or to one piece of it: the same bytes on their
// way back. A request in pieces is answered piece by piece, which spares putting
// it together: the first piece alone carries type and checksum.
Packet echoReply(const IpPacket& request, std::uint8_t hopLimit);

// A UDP answer from the port and address that were asked.
Packet udpReply(const IpPacket& request, Bytes data, std::uint8_t hopLimit);

// The errors that routers and hosts send back (RFC 792, RFC 4443).
enum class IcmpError { TimeExceeded, PortUnreachable, HostUnreachable, NetUnreachable, TooLong };

// An error and, with TooLong, the longest packet that passes, in bytes (RFC 1191
// section 4, RFC 4443 section 3.2).
struct Report {
  IcmpError error = IcmpError::TimeExceeded;
  std::uint32_t mtu = 0;
};

// A report about `packet`, sent from `from`, which must be of the packet's
// family. It quotes the packet as it stood there, with `hopsLeft` still to go.
Packet icmpError(const Report& report, const IpPacket& packet, const IpAddress& from,
                 std::uint8_t hopsLeft, std::uint8_t hopLimit);

}  // namespace veltrin::lab
