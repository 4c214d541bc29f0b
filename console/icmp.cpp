// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/icmp.h"

#include <algorithm>

namespace veltrin {
namespace {

// Option types (RFC 791 section 3.1).
constexpr std::uint8_t kOptionEnd = 0;
constexpr std::uint8_t kOptionNothing = 1;
constexpr std::uint8_t kOptionRoute = 7;
constexpr std::uint8_t kOptionTimes = 68;
constexpr std::uint8_t kOptionLooseRoute = 131;

// Record route: type, length, pointer, then four bytes a hop.
constexpr std::size_t kRouteHeader = 3;
constexpr std::size_t kRouteSlot = 4;

// Timestamp: type, length, pointer, overflow and flag, then eight bytes a hop.
// Flag 1 asks for each hop's address beside its time.
constexpr std::size_t kTimesHeader = 4;
constexpr std::size_t kTimesSlot = 8;
constexpr std::uint8_t kTimesWithAddresses = 1;

// The data of an echo repeats these letters.
constexpr std::size_t kLetters = 23;

std::uint16_t word(ByteView bytes, std::size_t at) {
  return static_cast<std::uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

std::uint32_t longWord(ByteView bytes, std::size_t at) {
  return static_cast<std::uint32_t>(word(bytes, at)) << 16 | word(bytes, at + 2);
}

void putWord(Bytes& bytes, std::size_t at, std::uint16_t value) {
  bytes[at] = static_cast<std::uint8_t>(value >> 8);
  bytes[at + 1] = static_cast<std::uint8_t>(value & 0xFF);
}

Address addressAt(ByteView bytes, std::size_t at) {
  Address address;
  std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), 4, address.bytes.begin());
  return address;
}

// The first option of a type, header included; empty when there is none or the
// list is broken before it.
ByteView findOption(ByteView options, std::uint8_t wanted) {
  while (!options.empty() && options[0] != kOptionEnd) {
    if (options[0] == kOptionNothing) {
      options = options.subspan(1);
      continue;
    }
    if (options.size() < 2 || options[1] < 2 || options[1] > options.size()) {
      return {};
    }
    const std::size_t length = options[1];
    if (options[0] == wanted) {
      return options.first(length);
    }
    options = options.subspan(length);
  }
  return {};
}

// The slots of an option that are filled: its pointer counts bytes from 1 and
// names the first free one.
ByteView filledSlots(ByteView option, std::size_t header, std::size_t slot) {
  if (option.size() < header || option[2] <= header) {
    return {};
  }
  const std::size_t end = std::min<std::size_t>(option[2] - std::size_t{1}, option.size());
  return option.subspan(header, (end - header) / slot * slot);
}

IcmpError unreachable4(std::uint8_t code) {
  switch (code) {
    case 0:   // net
    case 6:   // net unknown
    case 9:   // net administratively prohibited
    case 11:  // net, for this type of service
      return IcmpError::NetUnreachable;
    case 2:
      return IcmpError::ProtocolUnreachable;
    case 3:
      return IcmpError::PortUnreachable;
    case 4:  // fragmentation needed and DF set
      return IcmpError::TooBig;
    default:  // host, source route failed, and the prohibitions of a host
      return IcmpError::HostUnreachable;
  }
}

IcmpError errorOf4(std::uint8_t type, std::uint8_t code) {
  switch (type) {
    case 3:
      return unreachable4(code);
    case 11:
      return code == 0 ? IcmpError::TtlExpired : IcmpError::ReassemblyExpired;
    case 12:
      return IcmpError::BadParameter;
    default:
      return IcmpError::Other;
  }
}

IcmpError unreachable6(std::uint8_t code) {
  switch (code) {
    case 0:  // no route
    case 5:  // source address failed a policy
    case 6:  // route rejected
      return IcmpError::NetUnreachable;
    case 4:
      return IcmpError::PortUnreachable;
    default:  // prohibited, beyond the scope, address unreachable
      return IcmpError::HostUnreachable;
  }
}

IcmpError errorOf6(std::uint8_t type, std::uint8_t code) {
  switch (type) {
    case 1:
      return unreachable6(code);
    case 2:
      return IcmpError::TooBig;
    case 3:
      return code == 0 ? IcmpError::TtlExpired : IcmpError::ReassemblyExpired;
    case 4:
      return IcmpError::BadParameter;
    default:
      return IcmpError::Other;
  }
}

}  // namespace

std::uint16_t internetChecksum(ByteView bytes) {
  std::uint32_t sum = 0;
  std::size_t at = 0;
  for (; at + 1 < bytes.size(); at += 2) {
    sum += word(bytes, at);
    sum = (sum & 0xFFFF) + (sum >> 16);
  }
  if (at < bytes.size()) {
    sum += static_cast<std::uint32_t>(bytes[at]) << 8;
    sum = (sum & 0xFFFF) + (sum >> 16);
  }
  return static_cast<std::uint16_t>(~sum & 0xFFFF);
}

Bytes buildEchoRequest(Family family, std::uint16_t id, std::uint16_t sequence, std::size_t size) {
  Bytes message(kEchoHeaderSize + size);
  message[0] = family == Family::IPv4 ? kEchoRequest4 : kEchoRequest6;
  putWord(message, 4, id);
  putWord(message, 6, sequence);
  for (std::size_t i = 0; i < size; ++i) {
    message[kEchoHeaderSize + i] = static_cast<std::uint8_t>('a' + i % kLetters);
  }
  if (family == Family::IPv4) {
    putWord(message, 2, internetChecksum(message));
  }
  return message;
}

void evenOut(Family family, Bytes& message) {
  if (message.size() < kEchoHeaderSize + 2) {
    return;
  }
  putWord(message, kEchoHeaderSize, static_cast<std::uint16_t>(~word(message, 6) & 0xFFFF));
  if (family == Family::IPv4) {
    putWord(message, 2, 0);
    putWord(message, 2, internetChecksum(message));
  }
}

std::optional<EchoMessage> parseEcho(Family family, ByteView message) {
  if (message.size() < kEchoHeaderSize || message[1] != 0) {
    return std::nullopt;
  }
  const std::uint8_t request = family == Family::IPv4 ? kEchoRequest4 : kEchoRequest6;
  const std::uint8_t reply = family == Family::IPv4 ? kEchoReply4 : kEchoReply6;
  if (message[0] != request && message[0] != reply) {
    return std::nullopt;
  }
  return EchoMessage{message[0] == reply, word(message, 4), word(message, 6),
                     message.size() - kEchoHeaderSize};
}

std::optional<ByteView> ipv4Payload(ByteView packet) {
  if (packet.size() < 20 || packet[0] >> 4 != 4) {
    return std::nullopt;
  }
  const std::size_t header = static_cast<std::size_t>(packet[0] & 0x0F) * 4;
  if (header < 20 || header > packet.size()) {
    return std::nullopt;
  }
  return packet.subspan(header);
}

IcmpError errorOf(Family family, std::uint8_t type, std::uint8_t code) {
  return family == Family::IPv4 ? errorOf4(type, code) : errorOf6(type, code);
}

std::size_t optionsSize(int routeSlots, int stampSlots) {
  std::size_t size = 0;
  if (routeSlots > 0) {
    size += kRouteHeader + kRouteSlot * static_cast<std::size_t>(routeSlots);
  }
  if (stampSlots > 0) {
    size += kTimesHeader + kTimesSlot * static_cast<std::size_t>(stampSlots);
  }
  return size;
}

Bytes buildOptions(int routeSlots, int stampSlots) {
  const std::size_t size = optionsSize(routeSlots, stampSlots);
  Bytes options((size + 3) / 4 * 4, kOptionEnd);
  std::size_t at = 0;
  if (routeSlots > 0) {
    options[0] = kOptionRoute;
    options[1] = static_cast<std::uint8_t>(optionsSize(routeSlots, 0));
    options[2] = kRouteHeader + 1;
    at = options[1];
  }
  if (stampSlots > 0) {
    options[at] = kOptionTimes;
    options[at + 1] = static_cast<std::uint8_t>(optionsSize(0, stampSlots));
    options[at + 2] = kTimesHeader + 1;
    options[at + 3] = kTimesWithAddresses;
  }
  return options;
}

Bytes buildSourceRoute(const std::vector<Address>& through) {
  if (through.empty()) {
    return {};
  }
  const std::size_t size = kRouteHeader + kRouteSlot * through.size();
  Bytes option((size + 3) / 4 * 4, kOptionEnd);
  option[0] = kOptionLooseRoute;
  option[1] = static_cast<std::uint8_t>(size);
  option[2] = kRouteHeader + 1;
  std::size_t at = kRouteHeader;
  for (const Address& host : through) {
    std::copy_n(host.bytes.begin(), kRouteSlot, option.begin() + static_cast<std::ptrdiff_t>(at));
    at += kRouteSlot;
  }
  return option;
}

std::vector<Address> recordedRoute(ByteView options) {
  const ByteView slots = filledSlots(findOption(options, kOptionRoute), kRouteHeader, kRouteSlot);
  std::vector<Address> route;
  for (std::size_t at = 0; at < slots.size(); at += kRouteSlot) {
    route.push_back(addressAt(slots, at));
  }
  return route;
}

std::vector<HopTime> recordedTimes(ByteView options) {
  const ByteView option = findOption(options, kOptionTimes);
  if (option.size() < kTimesHeader || (option[3] & 0x0F) != kTimesWithAddresses) {
    return {};
  }
  const ByteView slots = filledSlots(option, kTimesHeader, kTimesSlot);
  std::vector<HopTime> times;
  for (std::size_t at = 0; at < slots.size(); at += kTimesSlot) {
    times.push_back(HopTime{addressAt(slots, at), longWord(slots, at + 4)});
  }
  return times;
}

}  // namespace veltrin
