// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/echo_bytes.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/icmp.h"

namespace veltrin {
namespace {

constexpr char kRequestType = 8;
constexpr char kReplyType = 0;

// Where the fields behind type and code begin.
constexpr std::size_t kChecksumAt = 2;
constexpr std::size_t kIdentifierAt = 4;
constexpr std::size_t kSequenceAt = 6;

// Shortest header of an IPv4 packet.
constexpr std::size_t kLeastIpHeader = 20;

// An ICMP error and the status that it is told as; without a code for all the rest.
struct Meaning {
  std::uint8_t type;
  std::optional<std::uint8_t> code;
  std::uint32_t status;
};

constexpr std::array<Meaning, 11> kMeanings{{
    {3, 0, kIpNetUnreachable},
    {3, 6, kIpNetUnreachable},   // no such network is known
    {3, 9, kIpNetUnreachable},   // prohibited
    {3, 11, kIpNetUnreachable},  // not for this type of service
    {3, 2, kIpProtocolUnreachable},
    {3, 3, kIpPortUnreachable},
    {3, 4, kIpPacketTooBig},  // must be split and may not
    {3, std::nullopt, kIpHostUnreachable},
    {11, 1, kIpReassemblyExceeded},
    {11, std::nullopt, kIpHopsExceeded},
    {12, std::nullopt, kIpBadParameter},
}};

void putWord(std::string& bytes, std::size_t at, std::uint32_t word) {
  bytes[at] = static_cast<char>(word >> 8 & 0xFF);
  bytes[at + 1] = static_cast<char>(word & 0xFF);
}

// RFC 1071, for a message whose checksum is still 0.
std::uint32_t checksumOf(std::string_view message) {
  std::uint64_t sum = 0;
  bool high = true;
  for (const char byte : message) {
    sum += std::uint64_t{static_cast<std::uint8_t>(byte)} << (high ? 8 : 0);
    high = !high;
  }
  while (sum > 0xFFFF) sum = sum % 0x10000 + sum / 0x10000;
  return static_cast<std::uint32_t>(0xFFFF - sum);
}

std::size_t firstCompared(EchoIdentity identity) {
  return identity == EchoIdentity::Own ? kIdentifierAt : kSequenceAt;
}

bool hasType(std::string_view message, char type) {
  return message.size() >= kEchoHead && message[0] == type && message[1] == 0;
}

}  // namespace

std::string echoRequest(std::uint16_t identifier, std::uint16_t sequence, std::string_view data) {
  std::string message(kEchoHead, '\0');
  message[0] = kRequestType;
  putWord(message, kIdentifierAt, identifier);
  putWord(message, kSequenceAt, sequence);
  message += data;
  putWord(message, kChecksumAt, checksumOf(message));
  return message;
}

bool answersEcho(std::string_view message, std::string_view request, EchoIdentity identity) {
  const std::size_t from = firstCompared(identity);
  return hasType(message, kReplyType) && message.substr(from) == request.substr(from);
}

bool quotesEcho(std::string_view quoted, std::string_view request, EchoIdentity identity) {
  const std::size_t from = firstCompared(identity);
  const std::size_t count = kEchoHead - from;
  return hasType(quoted, kRequestType) && quoted.substr(from, count) == request.substr(from, count);
}

std::string_view behindIpHeader(std::string_view packet) {
  if (packet.empty()) return {};
  const auto first = static_cast<std::uint8_t>(packet[0]);
  const std::size_t header = std::size_t{first} % 16 * 4;
  if (first / 16 != 4 || header < kLeastIpHeader || header > packet.size()) return {};
  return packet.substr(header);
}

std::uint32_t statusOfIcmpError(std::uint8_t type, std::uint8_t code) {
  const auto fits = [=](const Meaning& meaning) {
    return meaning.type == type && meaning.code.value_or(code) == code;
  };
  const auto* const found = std::find_if(kMeanings.begin(), kMeanings.end(), fits);
  return found == kMeanings.end() ? kIpGeneralFailure : found->status;
}

}  // namespace veltrin
