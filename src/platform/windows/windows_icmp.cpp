// SPDX-License-Identifier: GPL-3.0-or-later
// Each of these stands on the one before.
// clang-format off
#include <winsock2.h>
#include <iphlpapi.h>
#include <icmpapi.h>
// clang-format on

#include "platform/windows/windows_icmp.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace veltrin {
namespace {

using SystemReply = ::ICMP_ECHO_REPLY;

// The system's record holds pointers, so it is longer in a 64-bit program than the one
// whose size a caller asks for. It also wants room for the eight bytes of an ICMP error
// and a status block of its own.
constexpr std::size_t kBesidesAsked = sizeof(SystemReply) + 8 + 2 * sizeof(void*);

// One echo and what the system made of it.
struct Echo {
  HANDLE file = nullptr;
  std::uint32_t address = 0;
  std::string data;
  DWORD timeout = 0;
  std::vector<SystemReply> room;  // the first is the answer; behind it stands its data
  DWORD replies = 0;
  DWORD error = 0;

  void send() {
    const auto size = static_cast<DWORD>(room.size() * sizeof(SystemReply));
    replies = ::IcmpSendEcho(file, address, data.data(), static_cast<WORD>(data.size()), nullptr,
                             room.data(), size, timeout);
    error = replies == 0 ? GetLastError() : 0;
  }

  // An IP_STATUS number, or the number of the system's failure.
  DWORD status() const {
    const DWORD told = room.front().Status;
    return replies == 0 && told == kIpSuccess ? error : told;
  }
};

// The echoed bytes as far as they lie in the room.
std::string dataOf(const Echo& echo) {
  const SystemReply& answer = echo.room.front();
  const auto* const begin = reinterpret_cast<const char*>(echo.room.data());
  const auto* const end = begin + echo.room.size() * sizeof(SystemReply);
  const auto* const data = static_cast<const char*>(answer.Data);
  if (data < begin || data > end) return {};
  const std::size_t there = std::min<std::size_t>(answer.DataSize, end - data);
  return {data, std::min(there, kMostEchoedData)};
}

HANDLE native(Icmp::Handle handle) {
  return reinterpret_cast<HANDLE>(handle);  // NOLINT: the system's handles are pointers
}

}  // namespace

WindowsIcmp::WindowsIcmp(WhileSilent whileSilent) : whileSilent_(std::move(whileSilent)) {}

int WindowsIcmp::WSAStartup(std::uint16_t version, WSADATA& data) {
  ::WSADATA told{};
  const int failure = ::WSAStartup(version, &told);
  data.wVersion = told.wVersion;
  data.iMaxSockets = told.iMaxSockets;
  return failure;
}

int WindowsIcmp::WSACleanup() { return ::WSACleanup(); }

Icmp::Handle WindowsIcmp::IcmpCreateFile() { return reinterpret_cast<Handle>(::IcmpCreateFile()); }

// The asked size is looked at here, as the room that the system gets is larger than that.
std::uint32_t WindowsIcmp::IcmpSendEcho(Handle handle, std::uint32_t address,
                                        const std::string& data, ICMP_ECHO_REPLY& reply,
                                        std::uint32_t replySize, std::uint32_t timeout) {
  reply = ICMP_ECHO_REPLY{};
  reply.RoundTripTime = kNoReplyTime;
  if (replySize < kEchoReplyHead + data.size()) {
    reply.Status = kIpBufferTooSmall;
    return 0;
  }
  const auto echo = std::make_shared<Echo>();
  echo->file = native(handle);
  echo->address = address;
  echo->data = data;
  echo->timeout = timeout;
  echo->room.resize((replySize + kBesidesAsked) / sizeof(SystemReply) + 1);
  const auto send = [echo] { echo->send(); };
  if (!whileSilent_ || !callInPool(send, whileSilent_)) send();

  const SystemReply& answer = echo->room.front();
  reply.Address = answer.Address;
  reply.Status = echo->status();
  if (echo->replies == 0 || reply.Status != kIpSuccess) return 0;
  reply.RoundTripTime = answer.RoundTripTime;
  reply.DataSize = answer.DataSize;
  reply.Options.Ttl = answer.Options.Ttl;
  reply.Options.Tos = answer.Options.Tos;
  reply.Options.Flags = answer.Options.Flags;
  reply.Data = dataOf(*echo);
  return echo->replies;
}

bool WindowsIcmp::IcmpCloseHandle(Handle handle) {
  return handle != kNoHandle && ::IcmpCloseHandle(native(handle)) != FALSE;
}

}  // namespace veltrin
