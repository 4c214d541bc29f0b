#include "platform/linux/linux_icmp.h"

namespace veltrin {

int LinuxIcmp::WSAStartup(std::uint16_t version, WSADATA& data) {
  data.wVersion = version;
  data.iMaxSockets = 32767;
  return 0;
}

int LinuxIcmp::WSACleanup() { return 0; }

Icmp::Handle LinuxIcmp::IcmpCreateFile() { return kNoHandle; }

std::uint32_t LinuxIcmp::IcmpSendEcho(Handle /*handle*/, std::uint32_t /*address*/,
                                      const std::string& /*data*/, ICMP_ECHO_REPLY& reply,
                                      std::uint32_t /*replySize*/, std::uint32_t /*timeout*/) {
  reply.Status = kIpGeneralFailure;
  reply.RoundTripTime = kNoReplyTime;
  return 0;
}

bool LinuxIcmp::IcmpCloseHandle(Handle handle) { return handle != kNoHandle; }

}  // namespace veltrin
