// Echoes of Linux.
#pragma once

#include <functional>
#include <string>

#include "platform/icmp.h"

namespace veltrin {

class LinuxIcmp : public Icmp {
 public:
  int WSAStartup(std::uint16_t version, WSADATA& data) override;
  int WSACleanup() override;
  Handle IcmpCreateFile() override;
  std::uint32_t IcmpSendEcho(Handle handle, std::uint32_t address, const std::string& data,
                             ICMP_ECHO_REPLY& reply, std::uint32_t replySize,
                             std::uint32_t timeout) override;
  bool IcmpCloseHandle(Handle handle) override;
};

}  // namespace veltrin
