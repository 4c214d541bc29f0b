// SPDX-License-Identifier: GPL-3.0-or-later
// Echoes of Windows.
#pragma once

#include <cstdint>
#include <string>

#include "platform/icmp.h"
#include "platform/windows/pool_call.h"

namespace veltrin {

// Each operation by the system call of its name. Handles are the system's own.
class WindowsIcmp : public Icmp {
 public:
  // `whileSilent` is called while an echo has no answer. Without it the call blocks.
  explicit WindowsIcmp(WhileSilent whileSilent = {});

  int WSAStartup(std::uint16_t version, WSADATA& data) override;
  int WSACleanup() override;
  Handle IcmpCreateFile() override;
  std::uint32_t IcmpSendEcho(Handle handle, std::uint32_t address, const std::string& data,
                             ICMP_ECHO_REPLY& reply, std::uint32_t replySize,
                             std::uint32_t timeout) override;
  bool IcmpCloseHandle(Handle handle) override;

 private:
  WhileSilent whileSilent_;
};

}  // namespace veltrin
