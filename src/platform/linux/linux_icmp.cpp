// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_icmp.h"

#include <poll.h>
#include <utility>

#include "platform/linux/socket_echo.h"
#include "platform/linux/tool_echo.h"

namespace veltrin {
namespace {

// As a caller of version 1.1 is told it; later ones have no such number.
constexpr std::uint16_t kMostSockets = 32767;

// The number before the point is the low byte.
constexpr std::uint16_t kHighestVersion = 0x0202;

std::uint16_t inOrder(std::uint16_t version) {
  return static_cast<std::uint16_t>(version % 256 * 256 + version / 256);
}

void waitInKernel(int descriptor, int milliseconds) {
  pollfd entry{descriptor, POLLIN, 0};
  poll(&entry, 1, milliseconds);
}

}  // namespace

LinuxIcmp::LinuxIcmp(std::string toolsFolder, WhileSilent whileSilent, std::vector<Way> ways)
    : tools_(std::move(toolsFolder)),
      whileSilent_(whileSilent ? std::move(whileSilent) : waitInKernel),
      ways_(std::move(ways)) {}

int LinuxIcmp::WSAStartup(std::uint16_t version, WSADATA& data) {
  data.wVersion = inOrder(version) <= inOrder(kHighestVersion) ? version : kHighestVersion;
  data.iMaxSockets = kMostSockets;
  return 0;
}

int LinuxIcmp::WSACleanup() { return 0; }

Icmp::Handle LinuxIcmp::IcmpCreateFile() {
  for (const Way each : ways_) {
    if (auto way = open(each)) {
      open_.emplace(++last_, std::move(way));
      return last_;
    }
  }
  return kNoHandle;
}

std::unique_ptr<EchoWay> LinuxIcmp::open(Way way) const {
  switch (way) {
    case Way::Datagram:
      return SocketEcho::open(SocketEcho::Kind::Datagram, whileSilent_);
    case Way::Raw:
      return SocketEcho::open(SocketEcho::Kind::Raw, whileSilent_);
    case Way::Tool:
      break;
  }
  std::string program = tools_.findProgram("ping");
  if (program.empty()) return nullptr;
  return std::make_unique<ToolEcho>(std::move(program), whileSilent_);
}

std::uint32_t LinuxIcmp::IcmpSendEcho(Handle handle, std::uint32_t address, const std::string& data,
                                      ICMP_ECHO_REPLY& reply, std::uint32_t replySize,
                                      std::uint32_t timeout) {
  reply = ICMP_ECHO_REPLY{};
  EchoQuestion question{address, ++sequence_, data, timeout};
  if (!exchange(handle, question, reply, replySize)) {
    reply.RoundTripTime = kNoReplyTime;
    return 0;
  }
  reply.DataSize = static_cast<std::uint16_t>(data.size());
  reply.Data = data.substr(0, kMostEchoedData);
  return 1;
}

bool LinuxIcmp::exchange(Handle handle, const EchoQuestion& question, ICMP_ECHO_REPLY& reply,
                         std::uint32_t replySize) {
  const auto way = open_.find(handle);
  if (way == open_.end()) {
    reply.Status = kIpGeneralFailure;
  } else if (question.address == 0) {
    // The kernel would take it for this machine.
    reply.Status = kIpBadDestination;
  } else if (replySize < kEchoReplyHead + question.data.size()) {
    reply.Status = kIpBufferTooSmall;
  } else {
    return way->second->exchange(question, reply);
  }
  return false;
}

bool LinuxIcmp::IcmpCloseHandle(Handle handle) { return open_.erase(handle) != 0; }

}  // namespace veltrin
