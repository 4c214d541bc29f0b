// SPDX-License-Identifier: GPL-3.0-or-later
#include "ping/pingmod.h"

#include <array>
#include <cstdint>

#include "ping/ping_values.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::string_view kAverage = "Average = ";
constexpr std::string_view kAverageOfZero = "Average = 0ms";

// The tail reading's places, counted back from the end of a chunk.
constexpr std::int64_t kUnitFromEnd = 4;     // "ms" with three characters behind it
constexpr std::int64_t kWindowFromEnd = 11;  // the nine characters before those three
constexpr std::int64_t kWindowLength = 9;
constexpr std::int64_t kDigits = 6;  // less the place of "=", from the second place behind it

constexpr const char* kEchoData = "PING!PING!PING!PING!PING!PING!";
constexpr std::uint32_t kEchoTime = 200;  // ms

// Of the socket layer: 1.1, the number before the point in the low byte.
constexpr std::uint16_t kSocketVersion = 0x101;
constexpr int kLowestMajor = 1;
constexpr int kLowestMinor = 1;
constexpr int kFewestSockets = 1;

constexpr std::size_t kAddressParts = 4;

int HiByte(std::uint16_t value) { return value >> 8; }
int LoByte(std::uint16_t value) { return value & 0xFF; }

// The parts of a text between its points. The parts behind the fourth only count.
struct AddressParts {
  std::array<std::string, kAddressParts> texts;
  std::size_t count = 0;

  void add(std::string_view part) {
    if (count < texts.size()) texts[count] = part;
    ++count;
  }
};

AddressParts splitAtPoints(std::string_view address) {
  AddressParts parts;
  for (auto point = address.find('.'); point != std::string_view::npos; point = address.find('.')) {
    parts.add(address.substr(0, point));
    address.remove_prefix(point + 1);
  }
  parts.add(address);
  return parts;
}

// A dotted address as it lies in memory: the first number is the lowest byte, so a fourth
// one from 128 up makes a negative number. 0 for a text that is none. Only the lowest byte
// of a number counts.
std::int32_t AddressStringToLong(const std::string& address) {
  constexpr unsigned kBits = 8;  // of a byte
  const AddressParts parts = splitAtPoints(address);
  if (parts.count != kAddressParts) return 0;
  std::uint32_t result = 0;
  const bool isAddress = skip([&] {
    for (std::size_t at = kAddressParts; at-- > 0;) {
      const auto number = static_cast<std::uint32_t>(toLong(toNumber(parts.texts[at])));
      result = result << kBits | (number & 0xFF);
    }
  });
  return isAddress ? static_cast<std::int32_t>(result) : 0;
}

// Both return a truth of the system: -1 or 0.
std::int16_t SocketsInitialize(Program& program) {
  WSADATA data;
  if (program.platform.icmp.WSAStartup(kSocketVersion, data) != 0) {
    program.MsgBox(
        "Windows Sockets for 32 bit Windows environments is not successfully responding.");
    return 0;
  }
  const int major = LoByte(data.wVersion);
  const int minor = HiByte(data.wVersion);
  if (major < kLowestMajor || (major == kLowestMajor && minor < kLowestMinor)) {
    program.MsgBox("Windows Sockets Version " + std::to_string(major) + "." +
                       std::to_string(minor) +
                       " is not supported by Windows Sockets for 32 bit Windows environments.",
                   kMessageWarning);
    return 0;
  }
  if (data.iMaxSockets < kFewestSockets) {
    program.MsgBox("This application requires a minimum of " + std::to_string(kFewestSockets) +
                       " supported sockets.",
                   kMessageWarning);
    return 0;
  }
  return -1;
}

std::int16_t SocketsCleanup(Program& program) {
  const int failure = program.platform.icmp.WSACleanup();
  if (failure == 0) return 0;
  program.MsgBox("Windows Sockets error " + std::to_string(failure) + " occurred in Cleanup.",
                 kMessageWarning);
  return -1;
}

// Whether each byte of a text is a character.
bool isAscii(std::string_view text) {
  unsigned char all = 0;
  for (const char c : text) all |= static_cast<unsigned char>(c);
  return all < 0x80;
}

// The tail reading of the last characters of a chunk, all of them that are looked at, when
// each is a byte: nothing can fail then, and nothing needs to be counted.
std::optional<std::string> readAsciiTail(std::string_view last, Loose& PingTime) {
  if (last.substr(last.size() - kUnitFromEnd - 1, 2) != "ms") return std::nullopt;
  const std::string_view window = last.substr(0, kWindowLength);
  PingTime = window;
  const std::size_t before = window.find('=');
  if (before >= kDigits) return std::nullopt;  // none, or too far behind for a number
  return std::string(window.substr(before + 2, kDigits - before - 1));
}

}  // namespace

// A first digit from 1 to 9 needs no case of its own: the text up to "ms" is the
// number whatever its length.
bool readAverage(const std::string& chunk, Loose& PingTime) {
  if (InStr(1, chunk, kAverageOfZero, Compare::IgnoreCase) > 0) {
    PingTime = 0;
    return true;
  }
  const std::int64_t found = InStr(1, chunk, kAverage, Compare::IgnoreCase);
  if (found == 0) return false;
  PingTime = Mid(chunk, found + Len(kAverage));
  if (Left(PingTime.text(), 1) == "0") {
    PingTime = 0;
    return true;
  }
  skip([&] {
    const std::string text = PingTime.text();
    PingTime = Left(text, InStr(1, text, "ms", Compare::IgnoreCase) - 1);
  });
  return false;
}

std::optional<std::string> readTail(const std::string& chunk, Loose& PingTime) {
  // What stands before these places of the chunk is not looked at.
  constexpr std::size_t kRead = kWindowFromEnd + 1;
  const std::string_view last = chunk.size() < kRead
                                    ? std::string_view()
                                    : std::string_view(chunk).substr(chunk.size() - kRead);
  if (!last.empty() && isAscii(last)) return readAsciiTail(last, PingTime);
  const std::string end = Right(chunk, kWindowFromEnd + 1);
  const std::int64_t length = Len(end);
  if (!holds([&] { return Mid(end, length - kUnitFromEnd, 2) == "ms"; })) return std::nullopt;
  skip([&] { PingTime = Mid(end, length - kWindowFromEnd, kWindowLength); });
  const std::string window = PingTime.text();
  const std::int64_t sign = InStr(1, Left(window, kWindowLength), "=");
  std::optional<std::string> value;
  if (sign > 0) skip([&] { value = Mid(window, sign + 2, kDigits - sign); });
  return value;
}

void Ping(Program& program, const std::string& address, ICMP_ECHO_REPLY& reply) {
  Icmp& icmp = program.platform.icmp;
  const std::int32_t destination = AddressStringToLong(address);
  SocketsInitialize(program);
  const Icmp::Handle handle = icmp.IcmpCreateFile();
  if (icmp.IcmpSendEcho(handle, static_cast<std::uint32_t>(destination), kEchoData, reply,
                        kEchoReplySize, kEchoTime) == 0) {
    program.shared<PingValues>().PingFailStatus = static_cast<std::int32_t>(0 - reply.Status);
  }
  icmp.IcmpCloseHandle(handle);
  SocketsCleanup(program);
}

}  // namespace veltrin
