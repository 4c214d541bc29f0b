// SPDX-License-Identifier: GPL-3.0-or-later
// Echoes without a console tool: the system's helper for ICMP.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace veltrin {

// An echo's outcome, field by field as the system keeps it for 32-bit programs
// (ipexport.h). Numbers are in the machine's order, addresses as
// they lie in memory on the network.
struct ICMP_ECHO_REPLY {
  struct IP_OPTION_INFORMATION {
    std::uint8_t Ttl = 0;
    std::uint8_t Tos = 0;
    std::uint8_t Flags = 0;
    std::uint8_t OptionsSize = 0;
    std::uint32_t OptionsData = 0;
  };

  std::uint32_t Address = 0;        // of whoever replied
  std::uint32_t Status = 0;         // 0 for a reply, else one of the IP_STATUS numbers
  std::uint32_t RoundTripTime = 0;  // ms, whole ones
  std::uint16_t DataSize = 0;       // bytes of the echoed data
  std::uint16_t Reserved = 0;
  std::uint32_t DataPointer = 0;
  IP_OPTION_INFORMATION Options;
  std::string Data;  // at most 250 bytes
};

// Size of such a record in memory, of which the system is told, and of what stands before
// its data; what is left is the longest data.
inline constexpr std::uint32_t kEchoReplySize = 278;
inline constexpr std::uint32_t kEchoReplyHead = 28;
inline constexpr std::size_t kMostEchoedData = kEchoReplySize - kEchoReplyHead;

// The time of an echo that nobody answered: above all that a caller takes for a reply's.
inline constexpr std::uint32_t kNoReplyTime = 0x7FFFFFFF;

// IP_STATUS numbers (ipexport.h).
inline constexpr std::uint32_t kIpSuccess = 0;
inline constexpr std::uint32_t kIpBufferTooSmall = 11001;
inline constexpr std::uint32_t kIpNetUnreachable = 11002;
inline constexpr std::uint32_t kIpHostUnreachable = 11003;
inline constexpr std::uint32_t kIpProtocolUnreachable = 11004;
inline constexpr std::uint32_t kIpPortUnreachable = 11005;
inline constexpr std::uint32_t kIpNoResources = 11006;
inline constexpr std::uint32_t kIpPacketTooBig = 11009;
inline constexpr std::uint32_t kIpTimedOut = 11010;
inline constexpr std::uint32_t kIpHopsExceeded = 11013;
inline constexpr std::uint32_t kIpReassemblyExceeded = 11014;
inline constexpr std::uint32_t kIpBadParameter = 11015;
inline constexpr std::uint32_t kIpBadDestination = 11018;
inline constexpr std::uint32_t kIpGeneralFailure = 11050;

// What WSAStartup tells of the socket layer.
struct WSADATA {
  std::uint16_t wVersion = 0;     // low byte: the number before the point
  std::uint16_t iMaxSockets = 0;  // as the system tells it to callers of version 1.1
};

// The operations of the operating system that an echo is made of.
class Icmp {
 public:
  using Handle = std::intptr_t;
  static constexpr Handle kNoHandle = -1;

  virtual ~Icmp() = default;

  // Starts the socket layer in a version whose number before the point is the low byte.
  // 0 on success, else the failure's number.
  virtual int WSAStartup(std::uint16_t version, WSADATA& data) = 0;

  // Ends it. 0 on success, else the call's own result (SOCKET_ERROR, -1).
  virtual int WSACleanup() = 0;

  // A handle for echoes, or kNoHandle.
  virtual Handle IcmpCreateFile() = 0;

  // Sends one echo to an IPv4 address, as it lies in memory, with `data` for its bytes, and
  // waits for the reply at most `timeout` milliseconds; no event routine runs meanwhile.
  // Returns the number of replies, and 0 when there is none. A RoundTripTime that is not of
  // a reply (no answer, a router's refusal, no right to send) is kNoReplyTime, and Status
  // then tells why.
  virtual std::uint32_t IcmpSendEcho(Handle handle, std::uint32_t address, const std::string& data,
                                     ICMP_ECHO_REPLY& reply, std::uint32_t replySize,
                                     std::uint32_t timeout) = 0;

  // False for a handle that is none.
  virtual bool IcmpCloseHandle(Handle handle) = 0;
};

}  // namespace veltrin
