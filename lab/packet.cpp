// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/packet.h"

#include <algorithm>
#include <array>

namespace veltrin::lab {
namespace {

// Lengths and offsets in the headers: RFC 791 section 3.1, RFC 8200 sections 3
// and 4.5, RFC 792, RFC 4443 section 2.1, RFC 768.
constexpr std::size_t kV4Header = 20;
constexpr std::size_t kV6Header = 40;
constexpr std::size_t kV6FragmentHeader = 8;
constexpr std::size_t kIcmpHeader = 8;
constexpr std::size_t kUdpHeader = 8;
constexpr std::size_t kIcmpChecksumAt = 2;
constexpr std::size_t kIcmpMtuAt = 6;
constexpr std::size_t kUdpChecksumAt = 6;

constexpr std::uint8_t kNextHopByHop = 0;
constexpr std::uint8_t kNextFragment = 44;
constexpr std::uint8_t kNextDestination = 60;

constexpr std::uint8_t kEchoRequestV4 = 8;
constexpr std::uint8_t kEchoReplyV4 = 0;
constexpr std::uint8_t kEchoRequestV6 = 128;
constexpr std::uint8_t kEchoReplyV6 = 129;

// Longest error packets: RFC 1812 section 4.3.2.3, RFC 4443 section 2.4 (c).
constexpr std::size_t kLongestErrorV4 = 576;
constexpr std::size_t kLongestErrorV6 = 1280;

std::uint16_t wordAt(Bytes bytes, std::size_t at) {
  return static_cast<std::uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

void putWord(Packet& packet, std::size_t at, std::size_t value) {
  packet[at] = static_cast<std::uint8_t>(value >> 8);
  packet[at + 1] = static_cast<std::uint8_t>(value);
}

void putAddress(Packet& packet, std::size_t at, const IpAddress& address) {
  const Bytes bytes = address.bytes();
  std::copy(bytes.begin(), bytes.end(), packet.begin() + static_cast<std::ptrdiff_t>(at));
}

// The checksum of a payload together with the addresses, length and protocol in
// front of it (RFC 768, RFC 8200 section 8.1).
std::uint16_t pseudoChecksum(const IpAddress& source, const IpAddress& destination,
                             std::uint8_t protocol, Bytes payload) {
  const std::size_t length = payload.size();
  const std::array<std::uint8_t, 6> trailer{static_cast<std::uint8_t>(length >> 24),
                                            static_cast<std::uint8_t>(length >> 16),
                                            static_cast<std::uint8_t>(length >> 8),
                                            static_cast<std::uint8_t>(length),
                                            0,
                                            protocol};
  const std::array<Bytes, 4> parts{source.bytes(), destination.bytes(), trailer, payload};
  return internetChecksum(parts);
}

std::size_t v4HeaderLength(Bytes packet) { return static_cast<std::size_t>(packet[0] & 0x0F) * 4; }

void setHopLimit(Packet& packet, Family family, std::uint8_t hopLimit) {
  if (family == Family::V6) {
    packet[7] = hopLimit;
    return;
  }
  packet[8] = hopLimit;
  putWord(packet, 10, 0);
  putWord(packet, 10, internetChecksum(Bytes(packet).first(v4HeaderLength(packet))));
}

// An IP header without options in front of `length` bytes of zeros.
Packet startPacket(const IpAddress& source, const IpAddress& destination, std::uint8_t protocol,
                   std::size_t length, std::uint8_t hopLimit) {
  const bool v4 = source.family() == Family::V4;
  Packet packet((v4 ? kV4Header : kV6Header) + length);
  if (v4) {
    packet[0] = 0x45;
    putWord(packet, 2, packet.size());
    packet[9] = protocol;
  } else {
    packet[0] = 0x60;
    putWord(packet, 4, length);
    packet[6] = protocol;
  }
  putAddress(packet, v4 ? 12 : 8, source);
  putAddress(packet, v4 ? 16 : 24, destination);
  setHopLimit(packet, source.family(), hopLimit);
  return packet;
}

// Type and code of an error: RFC 792, RFC 1191 section 4, RFC 4443 sections 3.1
// to 3.3.
std::array<std::uint8_t, 2> typeAndCode(IcmpError error, Family family) {
  const bool v4 = family == Family::V4;
  switch (error) {
    case IcmpError::PortUnreachable:
      return v4 ? std::array<std::uint8_t, 2>{3, 3} : std::array<std::uint8_t, 2>{1, 4};
    case IcmpError::HostUnreachable:
      return v4 ? std::array<std::uint8_t, 2>{3, 1} : std::array<std::uint8_t, 2>{1, 3};
    case IcmpError::NetUnreachable:
      return v4 ? std::array<std::uint8_t, 2>{3, 0} : std::array<std::uint8_t, 2>{1, 0};
    case IcmpError::TooLong:
      return v4 ? std::array<std::uint8_t, 2>{3, 4} : std::array<std::uint8_t, 2>{2, 0};
    case IcmpError::TimeExceeded:
      break;
  }
  return {static_cast<std::uint8_t>(v4 ? 11 : 3), 0};
}

std::optional<IpPacket> readV4(Bytes bytes) {
  if (bytes.size() < kV4Header) return std::nullopt;
  const std::size_t header = v4HeaderLength(bytes);
  const std::size_t total = wordAt(bytes, 2);
  if (header < kV4Header || total < header || total > bytes.size()) return std::nullopt;
  if (internetChecksum(bytes.first(header)) != 0) return std::nullopt;

  IpPacket packet;
  packet.whole = bytes.first(total);
  packet.source = IpAddress(bytes.subspan(12, 4));
  packet.destination = IpAddress(bytes.subspan(16, 4));
  packet.hopsLeft = bytes[8];
  packet.protocol = bytes[9];
  packet.payloadStart = header;
  packet.identification = wordAt(bytes, 4);
  packet.fragmentOffset = static_cast<std::size_t>(wordAt(bytes, 6) & 0x1FFF) * 8;
  packet.mayBeCut = (bytes[6] & 0x40) == 0;
  packet.fragmented = packet.fragmentOffset != 0 || (bytes[6] & 0x20) != 0;
  return packet;
}

// Steps over one header between the IP header and the payload. False when it
// does not fit into the packet.
bool passV6Header(IpPacket& packet) {
  const std::size_t at = packet.payloadStart;
  if (at + kV6FragmentHeader > packet.whole.size()) return false;
  const Bytes header = packet.whole.subspan(at);
  std::size_t length = kV6FragmentHeader;
  if (packet.protocol == kNextFragment) {
    packet.fragmentOffset = wordAt(header, 2) & 0xFFF8U;
    packet.fragmented = packet.fragmentOffset != 0 || (header[3] & 1) != 0;
    packet.identification = static_cast<std::uint32_t>(wordAt(header, 4)) << 16 | wordAt(header, 6);
  } else {
    length = (static_cast<std::size_t>(header[1]) + 1) * 8;
  }
  packet.protocol = header[0];
  packet.payloadStart = at + length;
  return packet.payloadStart <= packet.whole.size();
}

std::optional<IpPacket> readV6(Bytes bytes) {
  if (bytes.size() < kV6Header) return std::nullopt;
  const std::size_t total = kV6Header + wordAt(bytes, 4);
  if (total > bytes.size()) return std::nullopt;

  IpPacket packet;
  packet.whole = bytes.first(total);
  packet.source = IpAddress(bytes.subspan(8, 16));
  packet.destination = IpAddress(bytes.subspan(24, 16));
  packet.hopsLeft = bytes[7];
  packet.protocol = bytes[6];
  packet.payloadStart = kV6Header;
  while (packet.fragmentOffset == 0 &&
         (packet.protocol == kNextHopByHop || packet.protocol == kNextDestination ||
          packet.protocol == kNextFragment)) {
    if (!passV6Header(packet)) return std::nullopt;
  }
  return packet;
}

}  // namespace

std::uint16_t internetChecksum(std::span<const Bytes> parts) {
  std::uint64_t sum = 0;
  for (const Bytes part : parts) {
    std::size_t at = 0;
    for (; at + 1 < part.size(); at += 2) sum += wordAt(part, at);
    if (at < part.size()) sum += static_cast<std::uint64_t>(part[at]) << 8;
  }
  while (sum > 0xFFFF) sum = (sum & 0xFFFF) + (sum >> 16);
  return static_cast<std::uint16_t>(~sum);
}

std::uint16_t internetChecksum(Bytes bytes) {
  return internetChecksum(std::span<const Bytes>(&bytes, 1));
}

std::optional<IpPacket> readIp(Bytes bytes) {
  if (bytes.empty()) return std::nullopt;
  if (bytes[0] >> 4 == 4) return readV4(bytes);
  if (bytes[0] >> 4 == 6) return readV6(bytes);
  return std::nullopt;
}

bool isEchoRequest(const IpPacket& packet) {
  const bool v4 = packet.family() == Family::V4;
  const Bytes payload = packet.payload();
  if (packet.protocol != (v4 ? kProtocolIcmp : kProtocolIcmpV6)) return false;
  if (packet.fragmentOffset != 0 || payload.size() < kIcmpHeader) return false;
  if (payload[0] != (v4 ? kEchoRequestV4 : kEchoRequestV6) || payload[1] != 0) return false;
  if (packet.fragmented) return true;
  const std::uint16_t checksum =
      v4 ? internetChecksum(payload)
         : pseudoChecksum(packet.source, packet.destination, kProtocolIcmpV6, payload);
  return checksum == 0;
}

bool isLaterEchoPiece(const IpPacket& packet) {
  const bool v4 = packet.family() == Family::V4;
  return packet.fragmentOffset != 0 && packet.protocol == (v4 ? kProtocolIcmp : kProtocolIcmpV6);
}

bool isUdp(const IpPacket& packet) {
  const Bytes payload = packet.payload();
  if (packet.protocol != kProtocolUdp || packet.fragmented || payload.size() < kUdpHeader) {
    return false;
  }
  if (wordAt(payload, 4) != payload.size()) return false;
  // Only version 4 may leave the checksum out (RFC 768, RFC 8200 section 8.1).
  if (wordAt(payload, kUdpChecksumAt) == 0) return packet.family() == Family::V4;
  return pseudoChecksum(packet.source, packet.destination, kProtocolUdp, payload) == 0;
}

Bytes udpData(const IpPacket& packet) { return packet.payload().subspan(kUdpHeader); }

std::uint16_t udpDestinationPort(const IpPacket& packet) { return wordAt(packet.payload(), 2); }

Packet echoReply(const IpPacket& request, std::uint8_t hopLimit) {
  const bool v4 = request.family() == Family::V4;
  Packet reply(request.whole.begin(), request.whole.end());
  putAddress(reply, v4 ? 12 : 8, request.destination);
  putAddress(reply, v4 ? 16 : 24, request.source);
  setHopLimit(reply, request.family(), hopLimit);
  if (request.fragmentOffset != 0) return reply;

  // The checksum follows the changed type by RFC 1624 section 3, as the bytes of
  // the later pieces are not at hand.
  const std::size_t icmp = request.payloadStart;
  const std::uint32_t before = wordAt(reply, icmp);
  reply[icmp] = v4 ? kEchoReplyV4 : kEchoReplyV6;
  const std::uint32_t after = wordAt(reply, icmp);
  std::uint32_t sum =
      (~static_cast<std::uint32_t>(wordAt(reply, icmp + kIcmpChecksumAt)) & 0xFFFF) +
      (~before & 0xFFFF) + after;
  sum = (sum & 0xFFFF) + (sum >> 16);
  sum = (sum & 0xFFFF) + (sum >> 16);
  putWord(reply, icmp + kIcmpChecksumAt, ~sum & 0xFFFF);
  return reply;
}

Packet udpReply(const IpPacket& request, Bytes data, std::uint8_t hopLimit) {
  const Bytes asked = request.payload();
  Packet reply = startPacket(request.destination, request.source, kProtocolUdp,
                             kUdpHeader + data.size(), hopLimit);
  const std::size_t udp = reply.size() - kUdpHeader - data.size();
  putWord(reply, udp, wordAt(asked, 2));
  putWord(reply, udp + 2, wordAt(asked, 0));
  putWord(reply, udp + 4, kUdpHeader + data.size());
  std::copy(data.begin(), data.end(),
            reply.begin() + static_cast<std::ptrdiff_t>(udp + kUdpHeader));
  const std::uint16_t checksum =
      pseudoChecksum(request.destination, request.source, kProtocolUdp, Bytes(reply).subspan(udp));
  // A checksum of 0 would say "none" and is sent as its equal (RFC 768).
  putWord(reply, udp + kUdpChecksumAt, checksum == 0 ? 0xFFFF : checksum);
  return reply;
}

Packet icmpError(const Report& report, const IpPacket& packet, const IpAddress& from,
                 std::uint8_t hopsLeft, std::uint8_t hopLimit) {
  const bool v4 = packet.family() == Family::V4;
  Packet quoted(packet.whole.begin(), packet.whole.end());
  setHopLimit(quoted, packet.family(), hopsLeft);
  const std::size_t longest =
      v4 ? kLongestErrorV4 - kV4Header - kIcmpHeader : kLongestErrorV6 - kV6Header - kIcmpHeader;
  quoted.resize(std::min(quoted.size(), longest));

  const std::uint8_t protocol = v4 ? kProtocolIcmp : kProtocolIcmpV6;
  Packet answer = startPacket(from, packet.source, protocol, kIcmpHeader + quoted.size(), hopLimit);
  const std::size_t icmp = v4 ? kV4Header : kV6Header;
  const auto kind = typeAndCode(report.error, packet.family());
  std::copy(kind.begin(), kind.end(), answer.begin() + static_cast<std::ptrdiff_t>(icmp));
  // Both families keep the size in the last two of these four bytes.
  putWord(answer, icmp + kIcmpMtuAt, report.mtu);
  std::copy(quoted.begin(), quoted.end(),
            answer.begin() + static_cast<std::ptrdiff_t>(icmp + kIcmpHeader));
  const Bytes body = Bytes(answer).subspan(icmp);
  putWord(answer, icmp + kIcmpChecksumAt,
          v4 ? internetChecksum(body) : pseudoChecksum(from, packet.source, protocol, body));
  return answer;
}

}  // namespace veltrin::lab
