// SPDX-License-Identifier: GPL-3.0-or-later
// Echoes of Linux.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/icmp.h"
#include "platform/linux/echo_way.h"
#include "platform/linux/linux_processes.h"

namespace veltrin {

// Which way an echo goes is found out anew for each handle, as rights may change while the
// program runs: through the kernel's socket for everyone's echoes, a raw socket, or the
// console tool `ping`. A handle for the last one holds nothing open.
class LinuxIcmp : public Icmp {
 public:
  enum class Way { Datagram, Raw, Tool };

  // Called while an echo has no answer; see EchoWay::Wait.
  using WhileSilent = EchoWay::Wait;

  // `toolsFolder` holds the console tool. Without `whileSilent` the wait is the kernel's.
  // `ways` are tried in their order.
  explicit LinuxIcmp(std::string toolsFolder, WhileSilent whileSilent = {},
                     std::vector<Way> ways = {Way::Datagram, Way::Raw, Way::Tool});

  // There is no layer to start: this succeeds with the version that was asked for, or with
  // the highest one when that is higher.
  int WSAStartup(std::uint16_t version, WSADATA& data) override;
  int WSACleanup() override;

  Handle IcmpCreateFile() override;
  std::uint32_t IcmpSendEcho(Handle handle, std::uint32_t address, const std::string& data,
                             ICMP_ECHO_REPLY& reply, std::uint32_t replySize,
                             std::uint32_t timeout) override;
  bool IcmpCloseHandle(Handle handle) override;

 private:
  std::unique_ptr<EchoWay> open(Way way) const;
  bool exchange(Handle handle, const EchoQuestion& question, ICMP_ECHO_REPLY& reply,
                std::uint32_t replySize);

  LinuxProcesses tools_;
  WhileSilent whileSilent_;
  std::vector<Way> ways_;
  std::map<Handle, std::unique_ptr<EchoWay>> open_;
  Handle last_ = 0;
  std::uint16_t sequence_ = 0;  // of the last echo, whichever its handle
};

}  // namespace veltrin
